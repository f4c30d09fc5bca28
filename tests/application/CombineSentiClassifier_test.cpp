#include <gtest/gtest.h>

#include <string>

#include "FixedScoreClassifier.h"
#include "TestSupport.h"
#include "application/CombineSentiClassifier.h"
#include "application/SentiClassifierFactory.h"

using namespace vortm;
using namespace vortm::testing;
using application::CombineSentiClassifier;

namespace {

// Configures `c` from a list of members, expecting `ok`, and returns what it printed.
std::string configure(CombineSentiClassifier& c, const std::string& members, bool ok = true) {
  registerFixedScoreClassifier();
  StdoutCapture capture;
  EXPECT_EQ(ok, c.config(*parseXml(list(members)))) << members;
  return capture.str();
}

TEST(CombineTest, WeightedSumIsNotNormalised) {
  // Weights 2 and 3 give 5; a zero weight is allowed, and the float type works as numeric.
  const std::pair<std::string, double> cases[] = {
      {fixed(2.0, scoreParam(1.0)) + fixed(3.0, scoreParam(1.0)), 5.0},
      {fixed(0.0, scoreParam(9.0)) +
           member("test_fixed_score", "<number_weight type=\"FLOAT\">1</number_weight>", scoreParam(0.25)), 0.25},
  };
  for (const auto& c : cases) {
    CombineSentiClassifier classifier;
    double score = 42.0;
    configure(classifier, c.first);
    ASSERT_TRUE(classifier.classify("text", score));
    EXPECT_DOUBLE_EQ(c.second, score);
    // An empty text gives 0.0 without asking the members.
    ASSERT_TRUE(classifier.classify("", score));
    EXPECT_EQ(0.0, score);
  }
}

TEST(CombineTest, ConfigFailuresAndTheirRecords) {
  const std::string noWeight =
      "No \"number_weight\" Item for the Number Senti Classifier  or the Weight Value is Invalid";
  const std::string noInit = "Fail to Init the Number Senti Classifer with Identifier ";
  // Each config and its warning; all weights zero fails silently.
  const std::pair<std::string, std::string> cases[] = {
      {member("no_such_classifier", numericWeight(1.0), ""), noInit + "no_such_classifier"},
      {"<item>" + numericWeight(1.0) + "</item>", "No \"identifier\" Item for the Number Senti Classifier"},
      // A weight without a type is a plain node, which has no float value.
      {member("test_fixed_score", "<number_weight>0.5</number_weight>", ""), noWeight},
      {fixed(-0.5, ""), noWeight},
      {member("test_fixed_score", "", ""), noWeight},
      {fixed(1.0, "<config_fail>true</config_fail>"), noInit + "test_fixed_score"},
      {"", "No Number Sentiment Classifer Inited"},
      {fixed(0.0, "") + fixed(0.0, ""), ""},
  };
  for (const auto& c : cases) {
    CombineSentiClassifier classifier;
    const std::string out = configure(classifier, c.first, false);
    if (c.second.empty())
      EXPECT_EQ("", out) << c.first;
    else
      EXPECT_TRUE(isLogRecord(out.substr(0, out.size() - 1), "Warn", "101", c.second)) << c.first << "\n" << out;
    double score = 3.0;
    EXPECT_FALSE(classifier.classify("text", score));
    EXPECT_EQ(3.0, score);  // not ready: the score is left alone
  }
}

TEST(CombineTest, FailingMemberFailsTheCallWithPartialSum) {
  CombineSentiClassifier c;
  configure(c, fixed(2.0, scoreParam(0.5)) + fixed(1.0, "<fail>true</fail>"));
  double score = 0.0;
  StdoutCapture capture;
  EXPECT_FALSE(c.classify("text", score));
  EXPECT_DOUBLE_EQ(1.0, score);
  EXPECT_TRUE(isLogRecord(capture.lines().at(0), "Warn", "101",
                          "Failed to Classify by One Number Sentiment Classifer"));
}

TEST(CombineTest, UpdateGoesByPosition) {
  CombineSentiClassifier c;
  configure(c, fixed(1.0, scoreParam(1.0)) + fixed(10.0, scoreParam(1.0)));
  double score = 0.0;
  // Fewer items than members update the first only; identifiers and weights are not read again.
  ASSERT_TRUE(c.update(*parseXml(list(member("ignored", numericWeight(100.0), scoreParam(-2.0))))));
  ASSERT_TRUE(c.classify("t", score));
  EXPECT_DOUBLE_EQ(-2.0 + 10.0, score);

  // More items than members, none, or a failing member update fail and leave
  // the classifier not ready; a good update makes it ready again.
  const std::string one = member("x", "", scoreParam(1.0));
  for (const std::string& bad : {one + one + one, std::string(), member("x", "", "<update_fail>true</update_fail>")}) {
    EXPECT_FALSE(c.update(*parseXml(list(bad)))) << bad;
    EXPECT_FALSE(c.classify("t", score)) << bad;
    ASSERT_TRUE(c.update(*parseXml(list(member("x", "", scoreParam(3.0)) + member("x", "", scoreParam(0.5))))));
    ASSERT_TRUE(c.classify("t", score));
    EXPECT_DOUBLE_EQ(3.0 + 5.0, score);
  }
}

TEST(CombineTest, FactoryFailures) {
  EXPECT_FALSE(application::SentiClassifierFactory::getSentiClassifier("nope", *parseXml(scoreParam(0.75))));
  StdoutCapture capture;
  const std::string missing = "/no/such.xml";
  EXPECT_FALSE(application::SentiClassifierFactory::getSentiClassifier("test_fixed_score", missing));
  // After the parser's own record with the reason (see ConfigFilesTest).
  EXPECT_TRUE(isLogRecord(capture.lines().at(1), "Warn", "101", "Failed to Parse Params with Config File/no/such.xml"));
}

}  // namespace
