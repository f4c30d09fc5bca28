#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "TokenBuilder.h"
#include "modular/StandardLexcionSentiScorer.h"

using namespace vortm;
using namespace vortm::testing;
using analyzer::Token;
using common::AutoPtr;
using modular::ILexcionSentiScorer;
using modular::StandardLexcionSentiScorer;

// Tags 6/7 positive/negative, 8/9 weak negative/positive, 10-14 degree
// words, 15 negation; 1 plain.

TEST(StandardScorerTest, WorkedCases) {
  StandardLexcionSentiScorer scorer;
  ASSERT_TRUE(scorer.config(*parseParam("<position_weighter><but_conj_boost type=\"float\">2.0</but_conj_boost>"
                                        "</position_weighter>")));
  const std::pair<const char*, double> cases[] = {
      // S / A damped by 0.25 per polar word up to four: none, one, two, four, mixed.
      {"", 0.0}, {"a a/10 a/15", 0.0}, {"a/6", 0.25}, {"a a/7 a", -0.25}, {"a/6 a a/6", 0.5},
      {"a/6 a/6 a/6 a/6", 1.0}, {"a/6 a a/6 a a/7", 0.25},
      // Alone a degree word cancels out; tag 10 makes 1.5 against -1: (0.5 / 2.5) x 0.5.
      {"a/10 a/6", 0.25}, {"a/10 a/6 a a/7", 0.1},
      // A negated negative word turns positive at a quarter, negation before or after it.
      {"a/15 a/7 a a/7", -0.3}, {"a/7 a/15", 0.25},
      // A weak word is divided by a strengthening degree and ignores a negation.
      {"a/10 a/8 a a/6", (1.0 - 0.25 / 1.5) / (1.0 + 0.25 / 1.5) * 0.5}, {"a/15 a/9 a a/7", -0.3},
      // The previous neighbour wins even with a neutral factor (1.0, then 1.5 x -1).
      {"a/12 a/6 a/10 a/7", -0.1},
      // A degree word two tokens away does nothing; an erasing one leaves p = 0, yet the word counts.
      {"a/10 a a/6 a a/7", 0.0}, {"a/14 a/6 a a/6", 0.5},
  };
  for (const auto& c : cases) EXPECT_DOUBLE_EQ(c.second, scoreItems(scorer, c.first)) << c.first;
}

TEST(StandardScorerTest, WeighterSettingsAndFailures) {
  // A quoted polar word weighs 0 here: it adds nothing but still counts, so
  // the lone unquoted word scores 1 x 2 x 0.25. A second config keeps that weighter.
  StandardLexcionSentiScorer scorer;
  ASSERT_TRUE(scorer.config(*parseParam("<position_weighter><quota_penalty type=\"float\">0.0</quota_penalty>"
                                        "</position_weighter>")));
  EXPECT_DOUBLE_EQ(0.5, scoreItems(scorer, "good/6 < bad/7 >"));
  ASSERT_TRUE(scorer.config(*parseParam("<position_weighter><quota_penalty type=\"float\">1.0</quota_penalty>"
                                        "</position_weighter>")));
  EXPECT_DOUBLE_EQ(0.5, scoreItems(scorer, "good/6 < bad/7 >"));

  // Without "position_weighter" config succeeds but scoring has no weights.
  StandardLexcionSentiScorer bare;
  ASSERT_TRUE(bare.config(*parseParam("<something>x</something>")));
  std::vector<Token> tokens = toks("good/6");
  double s = 0.0;
  EXPECT_THROW(bare.getSentiScore(tokens, s), std::runtime_error);

  // The registry refuses an unknown or missing identifier and drops the old scorer.
  AutoPtr<ILexcionSentiScorer> made(new StandardLexcionSentiScorer(), true);
  EXPECT_FALSE(ILexcionSentiScorer::configLexcionSentiScorer(*parseParam("<identifier>nope</identifier>"), made));
  EXPECT_TRUE(made.get() == nullptr);
  EXPECT_FALSE(ILexcionSentiScorer::configLexcionSentiScorer(*parseParam("<param>x</param>"), made));
}

TEST(StandardScorerTest, ExplanationComesFromTheScoringPass) {
  StandardLexcionSentiScorer scorer;
  ASSERT_TRUE(scorer.config(*parseParam("<position_weighter><quota_penalty type=\"float\">0.5</quota_penalty>"
                                        "<question_mark_penalty type=\"float\">0.5</question_mark_penalty>"
                                        "<position_aware>true</position_aware></position_weighter>")));
  const char* cases[] = {"", "a a", "a/10 a/6 a a/7", "x/6 but/but y/7 z/15 w/8 .",
                         "< q/6 > though/though r/9 , s/6 ? t/7 . u/6 . v/7", "a/14 a/6 a a/6"};
  for (const char* items : cases) expectExplanationMatchesScore(scorer, items);

  std::vector<Token> tokens = toks("x/6 but/but y/7 z/15 w/8 .");
  double s = 0.0;
  modular::ScoreTrace trace;
  scorer.explainSentiScore(tokens, s, trace);
  ASSERT_EQ(3u, trace.words.size());
  EXPECT_EQ("x", trace.words[0].token.term);
  EXPECT_EQ("", trace.words[0].weightReason);
  EXPECT_EQ(-1, trace.words[0].modifierIndex);
  EXPECT_EQ("but", trace.words[1].weightReason);
  EXPECT_DOUBLE_EQ(2.0, trace.words[1].weight);
  // z is a negation right after y: y takes its factor, and w (weak) keeps
  // its value although the same negation stands before it.
  EXPECT_EQ(3, trace.words[1].modifierIndex);
  EXPECT_EQ("z", trace.words[1].modifier.term);
  EXPECT_DOUBLE_EQ(-0.25, trace.words[1].degree);
  EXPECT_DOUBLE_EQ(-0.25, trace.words[2].value);
  EXPECT_DOUBLE_EQ(0.75, trace.damping);  // three polar words

  tokens = toks("< q/6 > though/though r/9 , s/6 ? t/7 . u/6 . v/7");
  scorer.explainSentiScore(tokens, s, trace);
  ASSERT_EQ(6u, trace.words.size());
  EXPECT_EQ("quote,position", trace.words[0].weightReason);
  EXPECT_EQ("though,position", trace.words[1].weightReason);
  EXPECT_EQ("question,position", trace.words[2].weightReason);
  EXPECT_EQ("position", trace.words[5].weightReason);
}
