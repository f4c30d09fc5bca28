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
using configure::Parameter;
using modular::ILexcionSentiScorer;
using modular::StandardLexcionSentiScorer;

namespace {

const char* kDefaultWeighter = "<position_weighter><but_conj_boost type=\"float\">2.0</but_conj_boost></position_weighter>";

// Scores a list of tags, each standing for one word.
double scoreTags(StandardLexcionSentiScorer& scorer, const std::vector<int>& tags) {
  TokenList list;
  for (size_t i = 0; i < tags.size(); ++i) list.word("w" + std::to_string(i), tags[i]);
  double score = 99.0;
  EXPECT_TRUE(scorer.getSentiScore(list.tokens(), score));
  return score;
}

class StandardScorerTest : public ::testing::Test {
 protected:
  void SetUp() override {
    AutoPtr<Parameter> p = parseParam(kDefaultWeighter);
    ASSERT_TRUE(p.get() != nullptr);
    ASSERT_TRUE(m_scorer.config(*p));
  }
  StandardLexcionSentiScorer m_scorer;
};

}  // namespace

TEST_F(StandardScorerTest, RatioAndDamping) {
  std::vector<Token> none;
  double score = 99.0;
  EXPECT_TRUE(m_scorer.getSentiScore(none, score));
  EXPECT_EQ(0.0, score);
  // No polar word at all.
  EXPECT_EQ(0.0, scoreTags(m_scorer, {1, 10, 15}));
  // One strong word alone: 1.0 damped by 1 x 0.25.
  EXPECT_DOUBLE_EQ(0.25, scoreTags(m_scorer, {6}));
  EXPECT_DOUBLE_EQ(-0.25, scoreTags(m_scorer, {1, 7, 1}));
  // Two in agreement 0.5; from four on no damping.
  EXPECT_DOUBLE_EQ(0.5, scoreTags(m_scorer, {6, 1, 6}));
  EXPECT_DOUBLE_EQ(1.0, scoreTags(m_scorer, {6, 6, 6, 6}));
  // Mixed: S / A = (1 + 1 - 1) / 3, damped by 0.75.
  EXPECT_DOUBLE_EQ(0.25, scoreTags(m_scorer, {6, 1, 6, 1, 7}));
}

TEST_F(StandardScorerTest, DegreeWordsAndNegation) {
  // Alone, a degree word cancels out in the ratio.
  EXPECT_DOUBLE_EQ(0.25, scoreTags(m_scorer, {10, 6}));
  // Tag 10 before tag 6 makes 1.5 against -1: (0.5 / 2.5) x 0.5.
  EXPECT_DOUBLE_EQ(0.1, scoreTags(m_scorer, {10, 6, 1, 7}));
  // A negated negative word turns positive at a quarter: 0.25 against -1.
  EXPECT_DOUBLE_EQ(-0.3, scoreTags(m_scorer, {15, 7, 1, 7}));
  EXPECT_DOUBLE_EQ(0.25, scoreTags(m_scorer, {7, 15}));
  // A weak word is divided by a strengthening degree: -0.25 / 1.5 against 1.
  EXPECT_DOUBLE_EQ((1.0 - 0.25 / 1.5) / (1.0 + 0.25 / 1.5) * 0.5, scoreTags(m_scorer, {10, 8, 1, 6}));
  // ... and ignores a negation: 0.25 stays, against -1.
  EXPECT_DOUBLE_EQ(-0.3, scoreTags(m_scorer, {15, 9, 1, 7}));
  // The previous neighbour wins even with a neutral factor: 1.0 for the
  // positive word, then 1.5 x -1 for the negative one behind tag 10.
  EXPECT_DOUBLE_EQ(-0.1, scoreTags(m_scorer, {12, 6, 10, 7}));
  // A degree word two tokens away has no effect.
  EXPECT_DOUBLE_EQ(0.0, scoreTags(m_scorer, {10, 1, 6, 1, 7}));
  // An erasing degree word leaves p = 0, yet the word counts: 1/1 x 0.5.
  EXPECT_DOUBLE_EQ(0.5, scoreTags(m_scorer, {14, 6, 1, 6}));
}

TEST(StandardScorerConfigTest, WeighterSettingsAndCounting) {
  // A quoted polar word weighs 0 here: it adds nothing to the sums but
  // still counts, so the lone unquoted word scores 2 x 0.25.
  StandardLexcionSentiScorer scorer;
  AutoPtr<Parameter> p =
      parseParam("<position_weighter><quota_penalty type=\"float\">0.0</quota_penalty></position_weighter>");
  ASSERT_TRUE(scorer.config(*p));
  TokenList list;
  list.word("good", 6).add("\"", Token::TT_QUOTE_BEGIN).word("great", 6).add("\"", Token::TT_QUOTE_END);
  double score = 0.0;
  ASSERT_TRUE(scorer.getSentiScore(list.tokens(), score));
  EXPECT_DOUBLE_EQ(0.5, score);

  // A second config keeps the weighter it has.
  AutoPtr<Parameter> other =
      parseParam("<position_weighter><quota_penalty type=\"float\">1.0</quota_penalty></position_weighter>");
  ASSERT_TRUE(scorer.config(*other));
  ASSERT_TRUE(scorer.getSentiScore(list.tokens(), score));
  EXPECT_DOUBLE_EQ(0.5, score);

  // Without "position_weighter" config succeeds but scoring has no weights.
  StandardLexcionSentiScorer bare;
  AutoPtr<Parameter> empty = parseParam("<something>x</something>");
  ASSERT_TRUE(bare.config(*empty));
  EXPECT_THROW(bare.getSentiScore(list.tokens(), score), std::runtime_error);
}

TEST(StandardScorerConfigTest, RegistryFailures) {
  // The working path through the registry is covered by the classifier.
  AutoPtr<ILexcionSentiScorer> scorer(new StandardLexcionSentiScorer(), true);
  AutoPtr<Parameter> unknown = parseParam("<identifier>no_such_scorer</identifier>");
  EXPECT_FALSE(ILexcionSentiScorer::configLexcionSentiScorer(*unknown, scorer));
  EXPECT_TRUE(scorer.get() == nullptr);
  AutoPtr<Parameter> missing = parseParam("<param>x</param>");
  EXPECT_FALSE(ILexcionSentiScorer::configLexcionSentiScorer(*missing, scorer));
}
