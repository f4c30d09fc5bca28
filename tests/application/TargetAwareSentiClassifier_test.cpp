// The target-aware classifiers over the shipped target-aware model.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "TestSupport.h"
#include "analyzer/Analyzer.h"
#include "application/TargetAwareSentiClassifiers.h"
#include "configure/BasicParamParser.h"
#include "utility/Utility.h"

using namespace vortm;
using namespace vortm::testing;
using application::TargetAwareStandardSentiClassifier;
using common::AutoPtr;

namespace {

std::string modelText() { return readFile(VORELIN_TARGET_MODEL_CONFIG); }

std::string withWeight(const std::string& weight) {
  std::string text = modelText();
  const std::string open = "<lexicon_weight type=\"numeric\">";
  size_t start = text.find(open) + open.size();
  return text.replace(start, text.find('<', start) - start, weight);
}

// Configures `classifier` from configuration text; the root is kept alive
// by the caller.
bool configureFrom(TargetAwareStandardSentiClassifier& classifier, const std::string& xml,
               AutoPtr<configure::Parameter>& root) {
  configure::BasicParamParser parser;
  StdoutCapture quiet;
  return parser.doParseFromText(xml, root) && classifier.config((*root)["target_aware_classifier"]);
}

class TargetAwareClassifierTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    s_classifier = new TargetAwareStandardSentiClassifier();
    s_root = new AutoPtr<configure::Parameter>();
    ASSERT_TRUE(configureFrom(*s_classifier, modelText(), *s_root));
  }
  static void TearDownTestSuite() {
    delete s_classifier;
    delete s_root;
  }
  static TargetAwareStandardSentiClassifier* s_classifier;
  static AutoPtr<configure::Parameter>* s_root;
};

TargetAwareStandardSentiClassifier* TargetAwareClassifierTest::s_classifier = nullptr;
AutoPtr<configure::Parameter>* TargetAwareClassifierTest::s_root = nullptr;

}  // namespace

TEST_F(TargetAwareClassifierTest, TwoTargetsOfOneTextGetOpposedSigns) {
  std::istringstream in(readFile(std::string(VORELIN_TEST_DATA_DIR) + "/target/two_targets.tsv"));
  int cases = 0;
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line[0] == '#') continue;
    const bool knownMiss = line[0] == '!';
    if (knownMiss) line.erase(0, 1);
    std::vector<std::string> f;
    utility::Utility::strTokenize(line, "\t", f);
    ASSERT_EQ(f.size(), 3u) << line;
    double good = 0.0;
    double bad = 0.0;
    ASSERT_TRUE(s_classifier->classifyMarkingTargets(f[2], {f[0]}, good));
    ASSERT_TRUE(s_classifier->classifyMarkingTargets(f[2], {f[1]}, bad));
    if (knownMiss) continue;
    EXPECT_GT(good, 0.0) << f[0] << " in " << f[2];
    EXPECT_LT(bad, 0.0) << f[1] << " in " << f[2];
    ++cases;
  }
  EXPECT_GE(cases, 5);
}

TEST_F(TargetAwareClassifierTest, TargetsAreTaughtForOneCallOnly) {
  const std::string text = "菜很好吃，但是服务太差";
  auto heads = [&] {
    return std::make_pair(s_classifier->centroidPart().getTextAnalyzer()->getAnalyzer()->getTokenizer().get(),
                          s_classifier->lexiconPart().getTextAnalyzer()->getAnalyzer()->getTokenizer().get());
  };
  auto before = heads();
  std::vector<analyzer::Token> plain;
  ASSERT_TRUE(s_classifier->lexiconPart().getTextAnalyzer()->tokenizeText(text, plain, true));

  double score = 1.0;
  ASSERT_TRUE(s_classifier->classifyMarkingTargets(text, {"服务"}, score));
  EXPECT_NE(score, 0.0);
  ASSERT_TRUE(s_classifier->classify(text, {"服务"}, score));
  // Alone, classify() tags the targets 29, which the weighters do not count.
  EXPECT_EQ(score, 0.0);
  EXPECT_EQ(heads(), before);
  std::vector<analyzer::Token> after;
  ASSERT_TRUE(s_classifier->lexiconPart().getTextAnalyzer()->tokenizeText(text, after, true));
  ASSERT_EQ(after.size(), plain.size());
  for (size_t i = 0; i < plain.size(); ++i) {
    EXPECT_EQ(after[i].term, plain[i].term);
    EXPECT_EQ(after[i].tag, plain[i].tag);
  }

  // No target, a blank target, a target not in the text, an empty text.
  for (const std::vector<std::string>& targets :
       {std::vector<std::string>{}, std::vector<std::string>{"  "}, std::vector<std::string>{"物流"}}) {
    score = 1.0;
    ASSERT_TRUE(s_classifier->classifyMarkingTargets(text, targets, score));
    EXPECT_EQ(score, 0.0);
  }
  score = 1.0;
  ASSERT_TRUE(s_classifier->classify("", {"服务"}, score));
  EXPECT_EQ(score, 0.0);
  EXPECT_EQ(heads(), before);
}

TEST(TargetAwareClassifierConfigTest, LexiconWeightBlendsTheParts) {
  const std::string text = "菜很好吃，但是服务太差";
  std::vector<double> scores;
  for (const char* weight : {"1.0", "0.0", "0.25", "1.5"}) {
    TargetAwareStandardSentiClassifier classifier;
    AutoPtr<configure::Parameter> root;
    ASSERT_TRUE(configureFrom(classifier, withWeight(weight), root)) << weight;
    double score = 0.0;
    ASSERT_TRUE(classifier.classifyMarkingTargets(text, {"菜"}, score));
    scores.push_back(score);
    if (std::string(weight) == "1.5") {
      EXPECT_EQ(classifier.getLexiconWeight(), 0.5);
    }
  }
  const double l = scores[0];
  const double c = scores[1];
  EXPECT_NE(l, c);
  EXPECT_NEAR(scores[2], 0.25 * l + 0.75 * c, 1e-12);
  EXPECT_NEAR(scores[3], 0.5 * l + 0.5 * c, 1e-12);
}

TEST(TargetAwareClassifierConfigTest, FailuresLeaveTheClassifierUnready) {
  TargetAwareStandardSentiClassifier unconfigured;
  double score = 1.0;
  EXPECT_FALSE(unconfigured.classify("好", {"好"}, score));
  EXPECT_EQ(score, 0.0);
  EXPECT_FALSE(unconfigured.update(configure::Parameter()));

  // No centroid files: the centroid part fails and the lexicon part is not tried.
  std::string text = modelText();
  size_t start = text.find("<senti_centroid_files>");
  size_t end = text.find("</senti_centroid_files>");
  ASSERT_NE(start, std::string::npos);
  std::string noCentroid = text.substr(0, start) + text.substr(end + std::string("</senti_centroid_files>").size());
  TargetAwareStandardSentiClassifier classifier;
  AutoPtr<configure::Parameter> root;
  EXPECT_FALSE(configureFrom(classifier, noCentroid, root));
  EXPECT_FALSE(classifier.lexiconPart().getTextAnalyzer());

  // An unknown target-aware scorer is reported with its name.
  std::string badScorer = text;
  const std::string name = "target_aware_weighted_lexcion_senti_scorer";
  badScorer.replace(badScorer.find(name), name.size(), "no_such_scorer");
  ASSERT_TRUE(root = parseXml(badScorer));
  application::TargetAwareSentiLexcionSentiClassifier lexicon;
  StdoutCapture capture;
  EXPECT_FALSE(lexicon.config((*root)["target_aware_classifier"]["target_aware_senti_lexcion_classifier"]));
  bool reported = false;
  for (const std::string& line : capture.lines())
    reported |= isLogRecord(line, "Warn", "101", "Failed to Init Target Aware Lexcion Senti Scorer with no_such_scorer");
  EXPECT_TRUE(reported);
}
