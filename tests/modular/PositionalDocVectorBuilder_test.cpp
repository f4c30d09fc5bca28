#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "TestSupport.h"
#include "TokenBuilder.h"
#include "common/CreatorRegister.h"
#include "modular/PositionalDocVectorBuilders.h"
#include "modular/Vocabulary.h"

using namespace vortm;
using namespace vortm::testing;
using analyzer::Token;
using common::AutoPtr;
using modular::IDocVectorBuilder;
using modular::IPositionWeighter;
using modular::IWordWeighter;
using utility::MySparseVector;

namespace {

// Hands out fixed weights, so that the counts can be checked by hand.
class FixedWeighter : public modular::IPositionWeighter {
 public:
  explicit FixedWeighter(std::vector<double> weights) : m_weights(weights) {}
  bool weighting(std::vector<Token>& tokens, std::vector<double>& weights) override {
    weights = m_weights;
    weights.resize(tokens.size(), 1.0);
    return true;
  }

 private:
  std::vector<double> m_weights;
};

class PositionalBuilderTest : public ::testing::Test {
 protected:
  void SetUp() override {
    modular::Vocabulary vocabulary;
    // English words need a df above 24 to be saved.
    for (const char* w : {"not", "good", "bad", "food", "service"}) vocabulary.addUserWord(w, 30, 30);
    vocabulary.setDocCount(100);
    ASSERT_TRUE(vocabulary.writeTo(m_dir.file("v")));
    m_param = parseXml("<p><vocabulary_file>" + m_dir.file("v") +
                         "</vocabulary_file><word_weighting_method>bool</word_weighting_method>"
                         "<normalize_method>none</normalize_method></p>");
    m_ids = vocabulary;
  }
  const configure::Parameter& param() { return (*m_param)["p"]; }
  double at(MySparseVector<double, int>& v, const std::string& word) {
    int index = v.getIndexById(m_ids.getWordId(word));
    return index < 0 ? -1.0 : *v.getIdValuePairByIndex(index).second;
  }

  TempDir m_dir;
  AutoPtr<configure::Parameter> m_param;
  modular::Vocabulary m_ids;
};

}  // namespace

TEST_F(PositionalBuilderTest, SentimentWordsBesideANegationAreNotCounted) {
  modular::SentiOrientedDocVectorBuilder builder;
  ASSERT_TRUE(builder.config(param()));
  MySparseVector<double, int> counts;
  // good after "not" and bad before "not" are dropped; the negation word and
  // the plain word beside it count, and so does good at the far end.
  std::vector<Token> tokens = toks("not/15 good/6 food not/15 bad/7 , good/6 good/8");
  ASSERT_TRUE(builder.buildWordFreVector(tokens, counts));
  EXPECT_DOUBLE_EQ(at(counts, "not"), 2.0);
  EXPECT_DOUBLE_EQ(at(counts, "food"), 1.0);
  EXPECT_DOUBLE_EQ(at(counts, "good"), 2.0);
  EXPECT_DOUBLE_EQ(at(counts, "bad"), -1.0);
  // Not in the registry: only the standard builders are.
  common::gfn_creatorRegister();
  EXPECT_EQ(common::InstanceCreator<IDocVectorBuilder>::getCreation("senti_doc_vec_builder"), nullptr);
}

TEST_F(PositionalBuilderTest, CountsAreSumsOfPositionWeights) {
  modular::PositionalDocVectorBuilder unready;
  EXPECT_FALSE(unready.config(param()));  // no position weighter

  modular::PositionalDocVectorBuilder builder(
      AutoPtr<IWordWeighter>(), AutoPtr<IPositionWeighter>(new FixedWeighter({0.5, 0.0, 2.0, 0.25}), true));
  ASSERT_TRUE(builder.config(param()));
  MySparseVector<double, int> counts;
  std::vector<Token> tokens = toks("food bad food unknown");
  ASSERT_TRUE(builder.buildWordFreVector(tokens, counts));
  EXPECT_DOUBLE_EQ(at(counts, "food"), 2.5);
  EXPECT_DOUBLE_EQ(at(counts, "bad"), 0.0);  // a zero weight still makes the entry
  EXPECT_EQ(counts.size(), 2);

  modular::PositionalDocVectorBuilder noVocabulary(
      AutoPtr<IWordWeighter>(), AutoPtr<IPositionWeighter>(new FixedWeighter({}), true));
  StdoutCapture quiet;
  EXPECT_FALSE(noVocabulary.config((*parseXml("<p><vocabulary_file>/nonexistent</vocabulary_file></p>"))["p"]));
}

TEST_F(PositionalBuilderTest, TargetAwareCountsSpreadFromTheTargets) {
  modular::TargetAwarePositionalDocVectorBuilder builder((AutoPtr<IWordWeighter>()),
                                                        AutoPtr<modular::ITargetAwarePositionWeighter>());
  ASSERT_TRUE(builder.config(param()));
  MySparseVector<double, int> counts;
  std::vector<Token> tokens = toks("food/target good/6");

  // One target in two tokens: 1.0 and 1 - 1.1/2.1 before scaling to sum 2.
  builder.setTarget({"  food "});
  EXPECT_EQ(builder.getTargets(), std::vector<std::string>({"food"}));
  ASSERT_TRUE(builder.buildWordFreVector(tokens, counts));
  const double other = 1.0 - 1.1 / 2.1;
  EXPECT_NEAR(at(counts, "food"), 2.0 / (1.0 + other), 1e-12);
  EXPECT_NEAR(at(counts, "good"), 2.0 * other / (1.0 + other), 1e-12);

  // A target that is not in the text, or no target: every count is 0.0.
  for (const std::vector<std::string>& targets : {std::vector<std::string>{"service"}, std::vector<std::string>{}}) {
    builder.setTarget(targets);
    counts.clear();
    ASSERT_TRUE(builder.buildWordFreVector(tokens, counts));
    EXPECT_DOUBLE_EQ(at(counts, "food"), 0.0);
    EXPECT_DOUBLE_EQ(at(counts, "good"), 0.0);
  }

  // Through the whole build: weighting and normalising still apply.
  builder.setTarget({"food"});
  ASSERT_TRUE(builder.buildDocVec(tokens, counts));
  EXPECT_DOUBLE_EQ(at(counts, "good"), 1.0);  // bool weighting of a count above 0.5
}
