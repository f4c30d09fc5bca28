#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TestSupport.h"
#include "TokenBuilder.h"
#include "modular/InnerSenSentiOrientedPositionWeighter.h"
#include "modular/SentiOrientedTargetAwarePositionWeighter.h"

using namespace vortm;
using namespace vortm::testing;
using analyzer::Token;

namespace {

void expectWeights(const std::vector<double>& expected, const std::vector<double>& actual, const std::string& what) {
  ASSERT_EQ(expected.size(), actual.size()) << what;
  for (size_t i = 0; i < expected.size(); ++i) EXPECT_DOUBLE_EQ(expected[i], actual[i]) << what << " at " << i;
}

// Raw target weights scaled to sum to their count.
std::vector<double> scaled(std::vector<double> raw) {
  double sum = 0;
  for (double r : raw) sum += r;
  for (double& r : raw) r = r / sum * raw.size();
  return raw;
}

std::vector<double> weigh(modular::IPositionWeighter& w, const std::string& items) {
  std::vector<Token> tokens = toks(items);
  std::vector<double> out;
  EXPECT_TRUE(w.weighting(tokens, out)) << items;
  return out;
}

std::vector<double> weigh(modular::ITargetAwarePositionWeighter& w, const std::string& items,
                          std::vector<std::string> targets) {
  std::vector<Token> tokens = toks(items);
  std::vector<double> out;
  EXPECT_TRUE(w.weighting(tokens, targets, out)) << items;
  return out;
}

}  // namespace

TEST(PositionWeighterTest, SentiOrientedFactors) {
  struct Case { std::string config, tokens; std::vector<double> expected; };
  const std::string quote = "<quota_penalty type=\"float\">0.5</quota_penalty>";
  const std::string question = "<question_mark_penalty type=\"float\">0.5</question_mark_penalty>";
  const std::string aware = "<position_aware>TrUe</position_aware>";
  const Case cases[] = {
      {"", "", {}},  // an empty text
      // The but-boost runs up to the next clause mark, which is spared.
      {"", "a but/but b , c", {1, 2, 2, 1, 1}},
      // A later conjunction replaces the earlier one, either way round; a sentence mark ends it.
      {"", "though/though a but/but b . c", {0.25, 0.25, 2, 2, 1, 1}},
      {"", "but/but a though/though b", {2, 2, 0.25, 0.25}},
      // A punctuation token with a conjunction tag starts nothing.
      {"", ",/but a", {1, 1}},
      // Quoted tokens take the penalty alone; the boost lives on behind the closing mark.
      {quote, "but/but < q > z", {2, 0.5, 0.5, 2, 2}},
      // A repeated config starts from the defaults: the quote penalty is gone.
      {"", "< q >", {1, 1, 1}},
      // A question damps back to the last mark of any kind, sparing it; first in the text it damps nothing.
      {question, "x , a but/but b ?", {1, 1, 0.5, 1, 1, 1}},
      {question, "? a", {1, 1}},
      // The position curve, s = sentence marks - 1 = 2: 0.75 before the first mark, then 0.5, 1.0, 1.5;
      // clause marks never count, and under two marks all is 1.0.
      {aware, "a . b . c ? d", {0.75, 0.5, 0.5, 1.0, 1.0, 1.5, 1.5}},
      {aware, "a , b , . c", {1, 1, 1, 1, 1, 1}},
      // Two marks, the fewest that make a curve: s = 1, so 0.75, then 1.0 and 2.0.
      {aware, "a . b ? c", {0.75, 1, 1, 2, 2}},
      // It multiplies the other factors; the flag is read case-insensitively, anything else leaves it clear.
      {aware, "but/but . b . c . d", {1.5, 0.5, 0.5, 1.0, 1.0, 1.5, 1.5}},
      {"<position_aware>yes</position_aware>", "but/but . b . c . d", {2, 1, 1, 1, 1, 1, 1}},
  };
  modular::SentiOrientedPositionWeighter w;
  for (const Case& c : cases) {
    ASSERT_TRUE(w.config(*parseXml(c.config.empty() ? "<none>0</none>" : c.config)));
    expectWeights(c.expected, weigh(w, c.tokens), c.config + " | " + c.tokens);
  }
}

TEST(PositionWeighterTest, InnerSentenceWeightsArePrinted) {
  // Runs rise from 0.75 by 0.5 / (L = run length + 1), their last token spared.
  modular::InnerSenSentiOrientedPositionWeighter w;
  std::vector<Token> closed = toks("a b c . d"), open = toks(". x y z w");
  std::vector<double> out;
  StdoutCapture capture;
  w.sentiPositionalWeighting(closed, out);
  expectWeights({0.875, 1.0, 1.0, 1.0, 1.0}, out, "closed run");
  EXPECT_EQ("a 0.875\nb 1\n", capture.str());
  out.clear();
  w.sentiPositionalWeighting(open, out);
  expectWeights({1.0, 0.85, 0.95, 1.05, 1.0}, out, "open run");
}

TEST(PositionWeighterTest, TargetPropagation) {
  modular::StandardTargetAwarePositionWeighter w;

  // Two tokens: 1.0 and 1 - 1.1/2.1 before scaling, summing to 2 after.
  std::vector<double> out = weigh(w, "T/target x", {"T"});
  expectWeights(scaled({1.0, 1.0 - 1.1 / 2.1}), out, "two tokens");
  EXPECT_DOUBLE_EQ(2.0, out[0] + out[1]);

  // Decay across a clause mark (/1.5) backwards and a sentence mark (*0.5)
  // forwards; the boundary token takes the reduced decay itself.
  const double L = 5.1;
  expectWeights(scaled({(1 - 2.1 / L) / 1.5, (1 - 1.1 / L) / 1.5, 1.0, (1 - 1.1 / L) * 0.5, (1 - 2.1 / L) * 0.5}),
                weigh(w, "a , T/target . b", {"T"}), "decay");

  // Target text without the target tag, a single token, or no targets: all
  // 0.0, nothing scaled. Without the target argument every token weighs 1.0.
  expectWeights({0, 0, 0}, weigh(w, "T x T/6", {"T"}), "untagged");
  expectWeights({0}, weigh(w, "T/target", {"T"}), "single");
  expectWeights({0, 0}, weigh(w, "T/target x", {}), "no targets");
  expectWeights({1, 1}, weigh(w, "T/target x"), "two-argument form");
}

TEST(PositionWeighterTest, SentiOrientedTargetAwareMultipliesBoth) {
  modular::SentiOrientedTargetAwarePositionWeighter w;
  ASSERT_TRUE(w.config(*parseXml("<but_conj_boost type=\"float\">3.0</but_conj_boost>")));
  // Target weights for three tokens (L = 3.1) scaled to sum 3, then the
  // configured boost from the but-word on; without targets all 1.0, no boost.
  const std::vector<double> t = scaled({1 - 2.1 / 3.1, 1 - 1.1 / 3.1, 1.0});
  expectWeights({t[0], t[1] * 3, t[2] * 3}, weigh(w, "x but/but T/target", {"T"}), "product");
  expectWeights({1, 1, 1}, weigh(w, "x but/but T/target"), "two-argument form");
}
