#include <gtest/gtest.h>

#include <string>

#include "FixedScoreClassifier.h"
#include "TestSupport.h"
#include "application/CombineSentiClassifier.h"
#include "application/SentiClassifierFactory.h"
#include "configure/BasicParamParser.h"

using namespace vortm;
using namespace vortm::testing;
using application::CombineSentiClassifier;
using common::AutoPtr;
using configure::Parameter;

namespace {


AutoPtr<Parameter> parse(const std::string& text) {
  configure::BasicParamParser parser;
  AutoPtr<Parameter> root;
  EXPECT_TRUE(parser.doParseFromText(text, root)) << text;
  return root;
}

std::string list(const std::string& members) {
  return "<number_senti_classifiers>" + members + "</number_senti_classifiers>";
}

class CombineTest : public ::testing::Test {
 protected:
  void SetUp() override { registerFixedScoreClassifier(); }

  // Configures a fresh classifier and returns the result with the output.
  bool configure(CombineSentiClassifier& c, const std::string& xml, std::string* out = nullptr) {
    AutoPtr<Parameter> root = parse(xml);
    StdoutCapture capture;
    bool ok = c.config(*root);
    if (out) *out = capture.str();
    return ok;
  }
};

TEST_F(CombineTest, WeightedSumIsNotNormalised) {
  double score = 42.0;
  {
    CombineSentiClassifier c;
    ASSERT_TRUE(configure(c, list(member("test_fixed_score", numericWeight(0.5), scoreParam(1.0)) +
                                  member("test_fixed_score", numericWeight(0.5), scoreParam(-1.0)))));
    ASSERT_TRUE(c.classify("text", score));
    EXPECT_DOUBLE_EQ(0.0, score);
  }
  {
    CombineSentiClassifier c;
    ASSERT_TRUE(configure(c, list(member("test_fixed_score", numericWeight(2.0), scoreParam(1.0)) +
                                  member("test_fixed_score", numericWeight(3.0), scoreParam(1.0)))));
    ASSERT_TRUE(c.classify("text", score));
    EXPECT_DOUBLE_EQ(5.0, score);

    // An empty text gives 0.0 without asking any member.
    int before = FixedScoreClassifier::s_calls;
    score = 7.0;
    ASSERT_TRUE(c.classify("", score));
    EXPECT_EQ(0.0, score);
    EXPECT_EQ(before, FixedScoreClassifier::s_calls);
  }
  {
    // One member of weight zero is allowed; the float type works as numeric.
    CombineSentiClassifier c;
    ASSERT_TRUE(configure(c, list(member("test_fixed_score", numericWeight(0.0), scoreParam(9.0)) +
                                  member("test_fixed_score", "<number_weight type=\"FLOAT\">1</number_weight>",
                                         scoreParam(0.25)))));
    ASSERT_TRUE(c.classify("text", score));
    EXPECT_DOUBLE_EQ(0.25, score);
  }
}

TEST_F(CombineTest, ConfigFailuresAndTheirRecords) {
  struct Case {
    std::string xml;
    std::string message;  // empty: fails silently
  };
  const std::string noWeight =
      "No \"number_weight\" Item for the Number Senti Classifier  or the Weight Value is Invalid";
  Case cases[] = {
      {list(member("no_such_classifier", numericWeight(1.0), "")),
       "Fail to Init the Number Senti Classifer with Identifier no_such_classifier"},
      {list("<item><param></param>" + numericWeight(1.0) + "</item>"),
       "No \"identifier\" Item for the Number Senti Classifier"},
      // A weight without a type is a plain node, which has no float value.
      {list(member("test_fixed_score", "<number_weight>0.5</number_weight>", "")), noWeight},
      {list(member("test_fixed_score", "<number_weight type=\"int\">1</number_weight>", "")), noWeight},
      {list(member("test_fixed_score", numericWeight(-0.5), "")), noWeight},
      {list(member("test_fixed_score", "", "")), noWeight},
      {list(member("test_fixed_score", numericWeight(1.0), "<config_fail>true</config_fail>")),
       "Fail to Init the Number Senti Classifer with Identifier test_fixed_score"},
      {list(""), "No Number Sentiment Classifer Inited"},
      {"<other>1</other>", "No Number Sentiment Classifer Inited"},
      {list(member("test_fixed_score", numericWeight(0.0), "") + member("test_fixed_score", numericWeight(0.0), "")),
       ""},
  };
  for (const Case& c : cases) {
    CombineSentiClassifier classifier;
    std::string out;
    EXPECT_FALSE(configure(classifier, c.xml, &out)) << c.xml;
    if (c.message.empty()) {
      EXPECT_EQ("", out) << c.xml;
    } else {
      EXPECT_TRUE(isLogRecord(out.substr(0, out.size() - 1), "Warn", "101", c.message)) << c.xml << "\n" << out;
    }
    double score = 3.0;
    EXPECT_FALSE(classifier.classify("text", score));
    EXPECT_EQ(3.0, score);  // not ready: the score is left alone
  }
}

TEST_F(CombineTest, FailingMemberFailsTheCallWithPartialSum) {
  CombineSentiClassifier c;
  ASSERT_TRUE(configure(c, list(member("test_fixed_score", numericWeight(2.0), scoreParam(0.5)) +
                                member("test_fixed_score", numericWeight(1.0), "<fail>true</fail>"))));
  double score = 0.0;
  StdoutCapture capture;
  EXPECT_FALSE(c.classify("text", score));
  EXPECT_DOUBLE_EQ(1.0, score);
  EXPECT_TRUE(isLogRecord(capture.lines().at(0), "Warn", "101", "Failed to Classify by One Number Sentiment Classifer"));
}

TEST_F(CombineTest, UpdateGoesByPosition) {
  CombineSentiClassifier c;
  ASSERT_TRUE(configure(c, list(member("test_fixed_score", numericWeight(1.0), scoreParam(1.0)) +
                                member("test_fixed_score", numericWeight(10.0), scoreParam(1.0)))));
  double score = 0.0;

  // Fewer items than members: only the first is updated; identifiers and
  // weights are not read again.
  ASSERT_TRUE(c.update(*parse(list(member("ignored", numericWeight(100.0), scoreParam(-2.0))))));
  ASSERT_TRUE(c.classify("t", score));
  EXPECT_DOUBLE_EQ(-2.0 + 10.0, score);

  // More items than members fails and leaves the classifier not ready.
  std::string three = list(member("x", "", scoreParam(1.0)) + member("x", "", scoreParam(1.0)) +
                           member("x", "", scoreParam(1.0)));
  EXPECT_FALSE(c.update(*parse(three)));
  EXPECT_FALSE(c.classify("t", score));

  // An empty list fails too; a good update makes it ready again.
  EXPECT_FALSE(c.update(*parse(list(""))));
  EXPECT_FALSE(c.classify("t", score));
  ASSERT_TRUE(c.update(*parse(list(member("x", "", scoreParam(3.0)) + member("x", "", scoreParam(0.5))))));
  ASSERT_TRUE(c.classify("t", score));
  EXPECT_DOUBLE_EQ(3.0 + 5.0, score);

  // A member whose update fails fails the whole update.
  EXPECT_FALSE(c.update(*parse(list(member("x", "", "<update_fail>true</update_fail>")))));
  EXPECT_FALSE(c.classify("t", score));
}

TEST_F(CombineTest, FactoryBuildsByIdentifier) {
  AutoPtr<Parameter> root = parse(scoreParam(0.75));
  auto c = application::SentiClassifierFactory::getSentiClassifier("test_fixed_score", *root);
  ASSERT_TRUE(c);
  double score = 0.0;
  ASSERT_TRUE(c->classify("t", score));
  EXPECT_DOUBLE_EQ(0.75, score);
  EXPECT_FALSE(application::SentiClassifierFactory::getSentiClassifier("nope", *root));

  StdoutCapture capture;
  EXPECT_FALSE(application::SentiClassifierFactory::getSentiClassifier("test_fixed_score",
                                                                       std::string("/no/such/file.xml")));
  EXPECT_TRUE(isLogRecord(capture.lines().at(0), "Warn", "101",
                          "Failed to Parse Params with Config File/no/such/file.xml"));
}

}  // namespace

namespace vortm {
namespace testing {
std::atomic<int> FixedScoreClassifier::s_calls(0);
}
}  // namespace vortm
