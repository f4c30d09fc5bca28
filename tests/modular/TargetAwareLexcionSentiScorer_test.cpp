#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TestSupport.h"
#include "TokenBuilder.h"
#include "common/CreatorRegister.h"
#include "common/InstanceCreator.h"
#include "modular/TargetAwareLexcionSentiScorers.h"
#include "utility/BufferedFileWriter.h"

using namespace vortm;
using namespace vortm::testing;
using analyzer::Token;
using common::AutoPtr;
using common::InstanceCreator;
using modular::ITargetAwareLexcionSentiScorer;
using modular::TargetAwareStandardLexcionSentiScorer;
using modular::TargetAwareWeightedLexcionSentiScorer;

namespace {

double score(ITargetAwareLexcionSentiScorer& scorer, const std::string& items, const std::vector<std::string>& targets) {
  std::vector<Token> tokens = toks(items);
  double s = 99.0;
  EXPECT_TRUE(scorer.getSentiScore(tokens, targets, s)) << items;
  return s;
}

}  // namespace

TEST(TargetAwareScorerTest, StandardScoringNearTheTarget) {
  // No position_weighter and no target_aware_position_weighter: both fine.
  TargetAwareStandardLexcionSentiScorer scorer;
  ASSERT_TRUE(scorer.config(*parseParam("<none></none>")));
  const std::string text = "good/6 phone/target x bad/7";
  // No targets, a target not in the text, or one only on an untagged token: all weights 0.
  EXPECT_DOUBLE_EQ(0.0, score(scorer, text, {}));
  EXPECT_DOUBLE_EQ(0.0, score(scorer, text, {"camera"}));
  EXPECT_DOUBLE_EQ(0.0, score(scorer, "good/6 phone x bad/7", {"phone"}));
  EXPECT_DOUBLE_EQ(0.0, score(scorer, "phone/target", {"phone"}));
  // good is one token from the target, bad two: raw weights 3 / 4.1 and 2 / 4.1.
  EXPECT_DOUBLE_EQ((3.0 - 2.0) / (3.0 + 2.0) * 0.5, score(scorer, text, {"camera", "phone"}));
  // The targets stay set for the plain call.
  std::vector<Token> tokens = toks(text);
  double s = 0.0;
  ASSERT_TRUE(scorer.getSentiScore(tokens, s));
  EXPECT_DOUBLE_EQ(0.1, s);
  EXPECT_EQ((std::vector<std::string>{"camera", "phone"}), scorer.getTargets());
}

TEST(TargetAwareScorerTest, WeightedScoringAndRegistry) {
  TempDir dir;
  {
    utility::BufferedFileWriter writer(dir.file("w.lex"), true);
    writer.writeUint32(0);
    writer.close();
  }
  common::gfn_creatorRegister();
  AutoPtr<ITargetAwareLexcionSentiScorer> made(
      InstanceCreator<ITargetAwareLexcionSentiScorer>::getCreation("target_aware_weighted_lexcion_senti_scorer"), true);
  ASSERT_TRUE(made);
  // The standard one resolves only once a host has built its creator.
  EXPECT_EQ(nullptr,
            InstanceCreator<ITargetAwareLexcionSentiScorer>::getCreation("target_aware_std_lexcion_senti_scorer"));
  {
    // The registry keeps a plain pointer to the creator, so it must outlive the test.
    static modular::TargetAwareStandardLexcionSentiScorerCreator creator;
    AutoPtr<ITargetAwareLexcionSentiScorer> standard(
        InstanceCreator<ITargetAwareLexcionSentiScorer>::getCreation("target_aware_std_lexcion_senti_scorer"), true);
    EXPECT_TRUE(standard);
  }

  // The base's failure is the only one.
  {
    StdoutCapture quiet;
    EXPECT_FALSE(made->config(*parseParam("<weighted_lexcion_file>" + dir.file("none.lex") +
                                          "</weighted_lexcion_file>")));
  }
  TargetAwareWeightedLexcionSentiScorer scorer;
  ASSERT_TRUE(scorer.config(*parseParam("<weighted_lexcion_file>" + dir.file("w.lex") + "</weighted_lexcion_file>")));
  EXPECT_DOUBLE_EQ(0.0, score(scorer, "good/6 phone/target x bad/7", {}));
  EXPECT_DOUBLE_EQ(0.0, score(scorer, "phone/target", {"phone"}));
  // Weights normalised to average 1 over four tokens: raw 3, 4.1, 3 and 2
  // (over 4.1). good, phone and bad are countable.
  const double total = 3.0 + 4.1 + 3.0 + 2.0;
  const double sum = (3.0 - 2.0) / total * 4.0;
  const double absSum = (3.0 + 2.0) / total * 4.0;
  EXPECT_DOUBLE_EQ(sum / (3 * 0.125 + 3.0 + absSum), score(scorer, "good/6 phone/target x bad/7", {"phone"}));
}
