#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "FixedScoreClassifier.h"
#include "TestSupport.h"
#include "vorelin.h"

using namespace vortm::testing;

namespace {

std::string combined(const std::string& members) {
  return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<number_senti_classifiers>" + members +
         "</number_senti_classifiers>\n";
}

class ApiTest : public ::testing::Test {
 protected:
  void SetUp() override { registerFixedScoreClassifier(); }
  std::string configFile(const std::string& name, const std::string& content) {
    std::string path = m_dir.file(name);
    writeFile(path, content);
    return path;
  }
  TempDir m_dir;
};

TEST_F(ApiTest, ArgumentChecks) {
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
  EXPECT_EQ(5.0, score);
  EXPECT_EQ(1, Senti_Classifier_Exit(nullptr));  // logs nothing

  auto lines = capture.lines();
  ASSERT_EQ(8u, lines.size());
  for (int i = 0; i < 3; ++i)
    EXPECT_TRUE(isLogRecord(lines[i], "Warn", "101", "Invalid Input Paremeters for Sentiment Classifier Init"));
  for (int i = 3; i < 5; ++i)
    EXPECT_TRUE(isLogRecord(lines[i], "Warn", "101", "Invalid Input Paremeters for Sentiment Classifier Update"));
  for (int i = 5; i < 8; ++i)
    EXPECT_TRUE(isLogRecord(lines[i], "Error", "301", "Invalid Input Paremeters for Sentiment Classification"));
}

TEST_F(ApiTest, InitFailuresLeaveTheHandleNull) {
  struct Case {
    std::string content;  // empty: the file does not exist
    std::vector<std::string> lines;
  };
  const std::string failed = "Failed to Init Sentiment Classifier";
  std::vector<Case> cases = {
      {"", {"Failed to Parse Params"}},
      {"<a>1</b>", {"Failed to Parse Params"}},
      {"<number_senti_classifiers><item>", {"Failed to Parse Params"}},
      {"<other>1</other>", {"No Number Sentiment Classifer Inited"}},
      {combined(member("unknown_classifier", numericWeight(1.0), "")),
       {"Fail to Init the Number Senti Classifer with Identifier unknown_classifier"}},
  };
  int n = 0;
  for (const Case& c : cases) {
    std::string path = c.content.empty() ? m_dir.file("missing.xml") : configFile("c" + std::to_string(n++), c.content);
    void* handle = reinterpret_cast<void*>(0x1);
    StdoutCapture capture;
    EXPECT_EQ(0, Senti_Classifier_Init(path.c_str(), &handle)) << c.content;
    EXPECT_EQ(nullptr, handle);
    auto lines = capture.lines();
    ASSERT_EQ(2u, lines.size()) << capture.str();
    if (c.lines[0] == "Failed to Parse Params") {
      EXPECT_EQ("Failed to Parse Params", lines[0]);
    } else {
      EXPECT_TRUE(isLogRecord(lines[0], "Warn", "101", c.lines[0])) << lines[0];
    }
    EXPECT_TRUE(isLogRecord(lines[1], "Error", "301", failed)) << lines[1];
  }
}

TEST_F(ApiTest, FullLifeCycle) {
  std::string path = configFile("ok.xml", combined(member("test_fixed_score", numericWeight(2.0), scoreParam(0.25))));
  void* handle = nullptr;
  {
    StdoutCapture capture;
    ASSERT_EQ(1, Senti_Classifier_Init(path.c_str(), &handle));
    ASSERT_NE(nullptr, handle);
    EXPECT_TRUE(isLogRecord(capture.lines().at(0), "Info", "001", "Sentiment Classifier Init Successfully"));
  }
  double score = 9.0;
  ASSERT_EQ(1, Senti_Classify_Perform(handle, "good", &score));
  EXPECT_DOUBLE_EQ(0.5, score);

  // Many threads on one handle give the same score.
  std::vector<std::thread> threads;
  std::atomic<int> wrong(0);
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 100; ++i) {
        double s = 0.0;
        if (Senti_Classify_Perform(handle, "text", &s) != 1 || s != 0.5) ++wrong;
      }
    });
  }
  for (auto& t : threads) t.join();
  EXPECT_EQ(0, wrong);

  // Update from a new file, by position.
  std::string update = configFile("up.xml", combined(member("x", "", scoreParam(-1.0))));
  ASSERT_EQ(1, Senti_Classifier_Update(update.c_str(), handle));
  ASSERT_EQ(1, Senti_Classify_Perform(handle, "good", &score));
  EXPECT_DOUBLE_EQ(-2.0, score);
  {
    StdoutCapture capture;
    std::string missing = m_dir.file("nope.xml");
    EXPECT_EQ(0, Senti_Classifier_Update(missing.c_str(), handle));
    EXPECT_EQ("Failed to Parse Params with Config File " + missing + "\n", capture.str());
  }
  // A failed update leaves the classifier not ready; the score is zeroed first.
  std::string empty = configFile("empty.xml", combined(""));
  EXPECT_EQ(0, Senti_Classifier_Update(empty.c_str(), handle));
  score = 4.0;
  EXPECT_EQ(0, Senti_Classify_Perform(handle, "good", &score));
  EXPECT_EQ(0.0, score);

  StdoutCapture capture;
  EXPECT_EQ(1, Senti_Classifier_Exit(handle));
  EXPECT_TRUE(isLogRecord(capture.lines().at(0), "Info", "001", "Global Exit Successfully"));
}

// The example host is plain C linked against libVorelin.so.
TEST(ExampleHostTest, CHostReportsAnUnknownIdentifier) {
  TempDir dir;
  std::string path = dir.file("unknown.xml");
  writeFile(path, combined(member("no_such_classifier", numericWeight(1.0), "")));
  std::string cmd = std::string(VORELIN_EXAMPLE_HOST) + " " + path + " 2>&1";
  FILE* pipe = popen(cmd.c_str(), "r");
  ASSERT_NE(nullptr, pipe);
  std::string out;
  char buf[512];
  while (fgets(buf, sizeof(buf), pipe)) out += buf;
  int status = pclose(pipe);
  EXPECT_NE(0, status);
  std::istringstream in(out);
  std::string line;
  std::vector<std::string> lines;
  while (std::getline(in, line)) lines.push_back(line);
  ASSERT_GE(lines.size(), 2u) << out;
  EXPECT_TRUE(isLogRecord(lines[0], "Warn", "101",
                          "Fail to Init the Number Senti Classifer with Identifier no_such_classifier"));
  EXPECT_TRUE(isLogRecord(lines[1], "Error", "301", "Failed to Init Sentiment Classifier"));
}

}  // namespace
