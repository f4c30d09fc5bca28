#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TestSupport.h"
#include "TokenBuilder.h"
#include "modular/InnerSenSentiOrientedPositionWeighter.h"
#include "modular/SentiOrientedPositionWeighter.h"
#include "modular/SentiOrientedTargetAwarePositionWeighter.h"
#include "modular/StandardPositionWeighter.h"
#include "modular/StandardTargetAwarePositionWeighter.h"

using namespace vortm;
using namespace vortm::testing;
using analyzer::Token;
using common::AutoPtr;
using configure::Parameter;
using modular::SentiOrientedPositionWeighter;

namespace {

const int kSen = Token::TT_SEN_PUNC;
const int kClause = Token::TT_CLAUSE_PUNC;
const int kQuoteBegin = Token::TT_QUOTE_BEGIN;
const int kQuoteEnd = Token::TT_QUOTE_END;
const int kQuestion = Token::TT_QUESTION_MARK;
const int kBut = Token::TG_BUT_CONJ;
const int kThough = Token::TG_THOUGH_CONJ;
const int kTarget = Token::TG_TARGET;

void expectWeights(const std::vector<double>& expected, const std::vector<double>& actual, const char* what) {
  ASSERT_EQ(expected.size(), actual.size()) << what;
  for (size_t i = 0; i < expected.size(); ++i) EXPECT_DOUBLE_EQ(expected[i], actual[i]) << what << " at " << i;
}

std::vector<double> weigh(SentiOrientedPositionWeighter& w, TokenList list) {
  std::vector<double> out;
  EXPECT_TRUE(w.weighting(list.tokens(), out));
  return out;
}

void setUp(SentiOrientedPositionWeighter& w, const std::string& xml) {
  AutoPtr<Parameter> p = parseParam(xml);
  ASSERT_TRUE(p.get() != nullptr) << xml;
  ASSERT_TRUE(w.config(*p));
}

}  // namespace

TEST(PositionWeighterTest, EmptyTextsGiveEmptyWeights) {
  std::vector<Token> none;
  std::vector<std::string> targets{"x"};
  modular::StandardPositionWeighter standard;
  modular::InnerSenSentiOrientedPositionWeighter inner;
  modular::SentiOrientedTargetAwarePositionWeighter both;
  std::vector<std::vector<double> > outs(6, std::vector<double>{3.0});
  standard.weighting(none, outs[0]);
  inner.weighting(none, outs[1]);
  inner.positionAwareWeighting(none, outs[2]);
  inner.sentiPositionalWeighting(none, outs[3]);
  both.StandardTargetAwarePositionWeighter::weighting(none, targets, outs[4]);
  both.weighting(none, targets, outs[5]);
  for (size_t i = 0; i < outs.size(); ++i) EXPECT_TRUE(outs[i].empty()) << i;
}

TEST(PositionWeighterTest, SentiOrientedFactors) {
  SentiOrientedPositionWeighter w;
  // The boost runs from the but-word up to the next clause mark, which is
  // spared, and stops there.
  expectWeights({1, 2, 2, 1, 1},
                weigh(w, TokenList().word("a").word("but", kBut).word("b").add(",", kClause).word("c")), "but");

  // A later conjunction replaces the earlier one; a sentence mark ends it.
  expectWeights({0.25, 0.25, 2, 2, 1, 1},
                weigh(w, TokenList().word("though", kThough).word("a").word("but", kBut).word("b").add(".", kSen).word("c")),
                "though then but");

  // A punctuation token with a conjunction tag starts nothing.
  expectWeights({1, 1}, weigh(w, TokenList().add(",", kClause, kBut).word("a")), "tagged mark");

  // Quotes with penalty 0.5: the opening mark and the quoted words take only
  // the penalty; the conjunction stays alive behind the closing mark, which
  // takes the boost.
  setUp(w, "<quota_penalty type=\"float\">0.5</quota_penalty>");
  expectWeights({2, 0.5, 0.5, 2, 2},
                weigh(w, TokenList().word("but", kBut).add("\"", kQuoteBegin).word("q").add("\"", kQuoteEnd).word("z")),
                "quote");

  // Question penalty 0.5 multiplies the factors already written, back to the
  // last clause mark, and spares the mark itself.
  setUp(w, "<question_mark_penalty type=\"float\">0.5</question_mark_penalty>");
  expectWeights({1, 1, 0.5, 1, 1, 1},
                weigh(w, TokenList().word("x").add(",", kClause).word("a").word("but", kBut).word("b").add("?", kQuestion)),
                "question");
  // A question mark first in the text penalises nothing.
  expectWeights({1, 1}, weigh(w, TokenList().add("?", kQuestion).word("a")), "question first");

  // A repeated config starts from the defaults: the quote penalty is gone.
  expectWeights({1, 1, 1}, weigh(w, TokenList().add("\"", kQuoteBegin).word("q").add("\"", kQuoteEnd)), "reconfig");
}

TEST(PositionWeighterTest, PositionAwareCurveAndFlag) {
  SentiOrientedPositionWeighter w;
  std::vector<double> out;
  // Three marks, s = 2: 0.75 before the first, then 0.5, 1.0, 1.5.
  TokenList three;
  three.word("a").add(".", kSen).word("b").add(".", kSen).word("c").add("?", kQuestion).word("d");
  w.positionAwareWeighting(three.tokens(), out);
  expectWeights({0.75, 0.5, 0.5, 1.0, 1.0, 1.5, 1.5}, out, "three marks");

  // One sentence mark, and clause marks never count: all 1.0.
  TokenList one;
  one.word("a").add(",", kClause).word("b").add(",", kClause).add(".", kSen).word("c");
  out.clear();
  w.positionAwareWeighting(one.tokens(), out);
  expectWeights({1, 1, 1, 1, 1, 1}, out, "one mark");

  // The flag is read case-insensitively; anything else leaves it clear.
  setUp(w, "<position_aware>TrUe</position_aware>");
  TokenList butThree;
  butThree.word("but", kBut).add(".", kSen).word("b").add(".", kSen).word("c").add(".", kSen).word("d");
  expectWeights({1.5, 0.5, 0.5, 1.0, 1.0, 1.5, 1.5}, weigh(w, butThree), "flag set");
  setUp(w, "<position_aware>yes</position_aware>");
  expectWeights({2, 1, 1, 1, 1, 1, 1}, weigh(w, butThree), "flag clear");
}

TEST(PositionWeighterTest, InnerSentenceWeightsArePrinted) {
  modular::InnerSenSentiOrientedPositionWeighter w;
  TokenList list;
  // A closed run a b c (L = 4), a mark, then a one-token run.
  list.word("a").word("b").word("c").add(".", kSen).word("d");
  std::vector<double> out;
  StdoutCapture capture;
  w.sentiPositionalWeighting(list.tokens(), out);
  expectWeights({0.875, 1.0, 1.0, 1.0, 1.0}, out, "closed run");
  EXPECT_EQ("a 0.875\nb 1\n", capture.str());

  // An open run at the end is weighted the same way, its last token spared.
  TokenList open;
  open.add(".", kSen).word("x").word("y").word("z").word("w");
  out.clear();
  w.sentiPositionalWeighting(open.tokens(), out);
  expectWeights({1.0, 0.85, 0.95, 1.05, 1.0}, out, "open run");
}

TEST(PositionWeighterTest, TargetPropagation) {
  modular::StandardTargetAwarePositionWeighter w;
  std::vector<std::string> targets{"T"};
  std::vector<double> out;

  // Two tokens: 1.0 and 1 - 1.1/2.1 before scaling, summing to 2 after.
  TokenList two;
  two.word("T", kTarget).word("x");
  w.weighting(two.tokens(), targets, out);
  const double other = 1.0 - 1.1 / 2.1;
  expectWeights({2.0 / (1.0 + other), 2.0 * other / (1.0 + other)}, out, "two tokens");
  EXPECT_DOUBLE_EQ(2.0, out[0] + out[1]);

  // Decay across a clause mark (/1.5) backwards and a sentence mark (*0.5)
  // forwards; the boundary token takes the reduced decay itself.
  TokenList marks;
  marks.word("a").add(",", kClause).word("T", kTarget).add(".", kSen).word("b");
  w.weighting(marks.tokens(), targets, out);
  const double L = 5.1;
  std::vector<double> raw{(1 - 2.1 / L) / 1.5, (1 - 1.1 / L) / 1.5, 1.0, (1 - 1.1 / L) * 0.5, (1 - 2.1 / L) * 0.5};
  double sum = 0;
  for (double r : raw) sum += r;
  for (double& r : raw) r = r / sum * 5;
  expectWeights(raw, out, "decay");

  // The target text without the target tag, a single token, or no targets:
  // all 0.0, nothing scaled.
  TokenList untagged;
  untagged.word("T").word("x").word("T", Token::TG_POSITIVE);
  w.weighting(untagged.tokens(), targets, out);
  expectWeights({0, 0, 0}, out, "untagged");
  TokenList single;
  single.word("T", kTarget);
  w.weighting(single.tokens(), targets, out);
  expectWeights({0}, out, "single");
  std::vector<std::string> none;
  w.weighting(two.tokens(), none, out);
  expectWeights({0, 0}, out, "no targets");
  // Without the target argument every token weighs 1.0.
  w.weighting(two.tokens(), out);
  expectWeights({1, 1}, out, "two-argument form");
}

TEST(PositionWeighterTest, SentiOrientedTargetAwareMultipliesBoth) {
  modular::SentiOrientedTargetAwarePositionWeighter w;
  AutoPtr<Parameter> p = parseParam("<but_conj_boost type=\"float\">3.0</but_conj_boost>");
  ASSERT_TRUE(w.config(*p));
  std::vector<std::string> targets{"T"};
  std::vector<double> out;
  TokenList list;
  list.word("x").word("but", kBut).word("T", kTarget);
  w.weighting(list.tokens(), targets, out);
  // Target weights for three tokens (L = 3.1), scaled to sum 3, then the
  // configured boost on the two tokens from the but-word on.
  std::vector<double> raw{1 - 2.1 / 3.1, 1 - 1.1 / 3.1, 1.0};
  const double sum = raw[0] + raw[1] + raw[2];
  expectWeights({raw[0] / sum * 3, raw[1] / sum * 3 * 3, raw[2] / sum * 3 * 3}, out, "product");
  // Without targets: all 1.0 and no boost.
  w.weighting(list.tokens(), out);
  expectWeights({1, 1, 1}, out, "two-argument form");
}
