// The C interface under misuse and hostile input: recovery after a failed
// update, configurations nested far too deep, and where the log goes.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TestSupport.h"
#include "vorelin.h"

using namespace vortm::testing;

namespace {

const std::string kGoodConfig = std::string(VORELIN_TEST_DATA_DIR) + "/lexicon_basic.xml";

TEST(HardeningTest, GoodUpdateAfterAFailedOneRestoresClassification) {
  // The same configuration in a folder without its word lists fails to load.
  TempDir dir;
  const std::string bad = dir.file("bad.xml");
  writeFile(bad, readFile(kGoodConfig));
  StdoutCapture quiet;
  void* handle = nullptr;
  double score = 0.0;
  ASSERT_EQ(1, Senti_Classifier_Init(kGoodConfig.c_str(), &handle));
  ASSERT_EQ(1, Senti_Classify_Perform(handle, "The staff were friendly", &score));
  EXPECT_DOUBLE_EQ(0.25, score);
  EXPECT_EQ(0, Senti_Classifier_Update(bad.c_str(), handle));
  EXPECT_EQ(0, Senti_Classify_Perform(handle, "The staff were friendly", &score));
  // Twice, so that a part dropped by the failure is rebuilt each time.
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(0, Senti_Classifier_Update(bad.c_str(), handle));
    ASSERT_EQ(1, Senti_Classifier_Update(kGoodConfig.c_str(), handle));
    score = 9.0;
    ASSERT_EQ(1, Senti_Classify_Perform(handle, "The staff were friendly", &score));
    EXPECT_DOUBLE_EQ(0.25, score);
  }
  EXPECT_EQ(1, Senti_Classifier_Exit(handle));
}

TEST(HardeningTest, DeepConfigurationFailsInInitAndUpdateOnASmallStack) {
  TempDir dir;
  const std::string deep = dir.file("deep.xml");
  writeFile(deep, "<number_senti_classifiers>" + nestedConfig(100000) + "</number_senti_classifiers>");
  StdoutCapture quiet;
  void* handle = nullptr;
  ASSERT_EQ(1, Senti_Classifier_Init(kGoodConfig.c_str(), &handle));
  int init = -1, update = -1;
  void* other = reinterpret_cast<void*>(0x1);
  ASSERT_TRUE(runOnSmallStack([&] {
    init = Senti_Classifier_Init(deep.c_str(), &other);
    update = Senti_Classifier_Update(deep.c_str(), handle);
  }));
  EXPECT_EQ(0, init);
  EXPECT_EQ(nullptr, other);
  EXPECT_EQ(0, update);
  EXPECT_EQ(1, Senti_Classifier_Exit(handle));
  EXPECT_NE(std::string::npos, quiet.str().find("Config Nested Deeper than 1000 Levels"));
}

TEST(HardeningTest, VorelinLogChoosesWhereRecordsGo) {
  // The example host prints scores on standard output; run from another
  // folder, the configuration's word lists are still found beside it.
  TempDir dir;
  const std::string host = std::string(VORELIN_EXAMPLE_HOST) + " " + kGoodConfig + " 'The staff were friendly'";
  const std::string scoreLine = "+0.2500\tThe staff were friendly";
  auto stdoutOf = [&](const std::string& env, const std::string& redirect) {
    CommandRun run = runCommand("cd / && " + env + " " + host + " " + redirect);
    EXPECT_EQ(0, run.code) << env << run.out;
    return splitLines(run.out);
  };
  // Unset and "stdout": records before and after the score.
  for (const std::string env : {"env -u VORELIN_LOG", "VORELIN_LOG=stdout"}) {
    std::vector<std::string> lines = stdoutOf(env, "2>/dev/null");
    ASSERT_EQ(3u, lines.size()) << env;
    EXPECT_TRUE(isLogRecord(lines[0], "Info", "001", "Sentiment Classifier Init Successfully"));
    EXPECT_EQ(scoreLine, lines[1]);
  }
  // "off" and "stderr": only the score; standard error gets the records.
  EXPECT_EQ(std::vector<std::string>{scoreLine}, stdoutOf("VORELIN_LOG=off", "2>&1"));
  EXPECT_EQ(std::vector<std::string>{scoreLine}, stdoutOf("VORELIN_LOG=stderr", "2>" + dir.file("err")));
  EXPECT_EQ(2u, splitLines(readFile(dir.file("err"))).size());
  // Any other value is a file, appended to.
  const std::string log = dir.file("host.log");
  for (int run = 0; run < 2; ++run)
    EXPECT_EQ(std::vector<std::string>{scoreLine}, stdoutOf("VORELIN_LOG=" + log, "2>&1"));
  std::vector<std::string> logged = splitLines(readFile(log));
  ASSERT_EQ(4u, logged.size());
  EXPECT_TRUE(isLogRecord(logged[3], "Info", "001", "Global Exit Successfully"));
}

TEST(HardeningTest, ThreadedHostUpdatesUnderTheWriteLock) {
  // Readers and one update around a handle, as the header shows; under the
  // thread sanitizer this also proves the pattern free of races.
  CommandRun run = runCommand(std::string("VORELIN_LOG=off ") + VORELIN_THREADED_HOST + " " + kGoodConfig + " 2>&1");
  EXPECT_EQ(0, run.code) << run.out;
  EXPECT_EQ("classified 800 texts, 0 failed, update done\n", run.out);
}

}  // namespace
