#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "FixedScoreClassifier.h"
#include "TestSupport.h"
#include "vorelin.h"

using namespace vortm::testing;

namespace {

class ApiTest : public ::testing::Test {
 protected:
  void SetUp() override { registerFixedScoreClassifier(); }
  std::string configFile(const std::string& name, const std::string& content) {
    writeFile(m_dir.file(name), content);
    return m_dir.file(name);
  }
  TempDir m_dir;
};

TEST_F(ApiTest, ArgumentChecksAndInitFailure) {
  // Each bad argument gives 0 and its record, leaving handle and score alone.
  void* handle = reinterpret_cast<void*>(0x1);
  double score = 5.0;
  StdoutCapture capture;
  EXPECT_EQ(0, Senti_Classifier_Init(nullptr, &handle));
  EXPECT_EQ(0, Senti_Classifier_Init("", &handle));
  EXPECT_EQ(0, Senti_Classifier_Init("x.xml", nullptr));
  EXPECT_EQ(reinterpret_cast<void*>(0x1), handle);  // not written
  EXPECT_EQ(0, Senti_Classifier_Update(nullptr, handle));
  EXPECT_EQ(0, Senti_Classifier_Update("x.xml", nullptr));
  EXPECT_EQ(0, Senti_Classify_Perform(nullptr, "text", &score));
  EXPECT_EQ(0, Senti_Classify_Perform(handle, "", &score));
  EXPECT_EQ(0, Senti_Classify_Perform(handle, nullptr, &score));
  EXPECT_EQ(0, Senti_Classify_Perform(handle, "text", nullptr));
  // The longest text accepted, plus one byte.
  const std::string overlong(VORELIN_MAX_TEXT_BYTES + 1, 'a');
  EXPECT_EQ(0, Senti_Classify_Perform(handle, overlong.c_str(), &score));
  EXPECT_EQ(5.0, score);
  EXPECT_EQ(1, Senti_Classifier_Exit(nullptr));  // logs nothing
  // A config that does not parse nulls the handle; one the classifier
  // refuses takes the same way out.
  EXPECT_EQ(0, Senti_Classifier_Init(m_dir.file("missing.xml").c_str(), &handle));
  EXPECT_EQ(nullptr, handle);
  handle = reinterpret_cast<void*>(0x1);
  const std::string unknown = configFile("unknown.xml", list(member("no_such_classifier", numericWeight(1.0), "")));
  EXPECT_EQ(0, Senti_Classifier_Init(unknown.c_str(), &handle));
  EXPECT_EQ(nullptr, handle);

  auto lines = capture.lines();
  ASSERT_EQ(15u, lines.size()) << capture.str();
  for (int i = 0; i < 3; ++i)
    EXPECT_TRUE(isLogRecord(lines[i], "Warn", "101", "Invalid Input Paremeters for Sentiment Classifier Init"));
  for (int i = 3; i < 5; ++i)
    EXPECT_TRUE(isLogRecord(lines[i], "Warn", "101", "Invalid Input Paremeters for Sentiment Classifier Update"));
  for (int i = 5; i < 10; ++i)
    EXPECT_TRUE(isLogRecord(lines[i], "Error", "301", "Invalid Input Paremeters for Sentiment Classification"));
  EXPECT_TRUE(isLogRecord(lines[10], "Warn", "101",
                          "Unable to Read Config File " + m_dir.file("missing.xml") + ": No such file or directory"));
  EXPECT_EQ("Failed to Parse Params", lines[11]);
  EXPECT_TRUE(isLogRecord(lines[12], "Error", "301", "Failed to Init Sentiment Classifier"));
  EXPECT_TRUE(isLogRecord(lines[13], "Warn", "101",
                          "Fail to Init the Number Senti Classifer with Identifier no_such_classifier"));
  EXPECT_TRUE(isLogRecord(lines[14], "Error", "301", "Failed to Init Sentiment Classifier"));
}

TEST_F(ApiTest, FullLifeCycle) {
  // Every line printed from init to exit is checked at the end.
  const std::string ok = configFile("ok.xml", list(fixed(2.0, scoreParam(0.25)))), missing = m_dir.file("nope.xml");
  void* handle = nullptr;
  double score = 9.0;
  StdoutCapture capture;
  ASSERT_EQ(1, Senti_Classifier_Init(ok.c_str(), &handle));
  ASSERT_NE(nullptr, handle);
  ASSERT_EQ(1, Senti_Classify_Perform(handle, "good", &score));
  EXPECT_DOUBLE_EQ(0.5, score);

  // Update from a new file goes by position; a missing file is reported.
  ASSERT_EQ(1, Senti_Classifier_Update(configFile("up.xml", list(member("x", "", scoreParam(-1.0)))).c_str(), handle));
  ASSERT_EQ(1, Senti_Classify_Perform(handle, "good", &score));
  EXPECT_DOUBLE_EQ(-2.0, score);
  EXPECT_EQ(0, Senti_Classifier_Update(missing.c_str(), handle));
  // A failed update leaves the classifier not ready; the score is zeroed first.
  EXPECT_EQ(0, Senti_Classifier_Update(configFile("empty.xml", list("")).c_str(), handle));
  score = 4.0;
  EXPECT_EQ(0, Senti_Classify_Perform(handle, "good", &score));
  EXPECT_EQ(0.0, score);
  EXPECT_EQ(1, Senti_Classifier_Exit(handle));

  const auto lines = capture.lines();
  ASSERT_EQ(4u, lines.size()) << capture.str();
  EXPECT_TRUE(isLogRecord(lines[0], "Info", "001", "Sentiment Classifier Init Successfully"));
  EXPECT_TRUE(isLogRecord(lines[1], "Warn", "101", "Unable to Read Config File " + missing + ": No such file or directory"));
  EXPECT_EQ("Failed to Parse Params with Config File " + missing, lines[2]);
  EXPECT_TRUE(isLogRecord(lines[3], "Info", "001", "Global Exit Successfully"));
}

}  // namespace
