#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <thread>
#include <vector>

#include "TestSupport.h"
#include "common/Logger.h"

using vortm::common::CLogger;
using vortm::common::gfn_pLoggerInstance;
using vortm::common::LoggerProxy;
using vortm::testing::isLogRecord;
using vortm::testing::StdoutCapture;

namespace {

// A logger whose date the test sets, to exercise the daily roll-over.
class DatedLogger : public CLogger {
 public:
  int m_date = 20261112;

 protected:
  int currentDateKey() const override { return m_date; }
};

TEST(LoggerTest, RecordFormatOnStandardOutput) {
  LoggerProxy* logger = gfn_pLoggerInstance(0, "", 0);
  // Later calls ignore their arguments and return the same logger.
  EXPECT_EQ(logger, gfn_pLoggerInstance(1, "/nonexistent", 1));

  StdoutCapture capture;
  EXPECT_EQ(0, logger->LogWarn("101", "Invalid Input Paremeters for Sentiment Classifier Init"));
  logger->LogInfo("001", "done");
  logger->LogError("301", "bad");
  logger->LogDebug("002", "dbg");
  auto lines = capture.lines();
  ASSERT_EQ(4u, lines.size());
  EXPECT_TRUE(isLogRecord(lines[0], "Warn", "101", "Invalid Input Paremeters for Sentiment Classifier Init"))
      << lines[0];
  EXPECT_TRUE(isLogRecord(lines[1], "Info", "001", "done")) << lines[1];
  EXPECT_TRUE(isLogRecord(lines[2], "Error", "301", "bad")) << lines[2];
  EXPECT_TRUE(isLogRecord(lines[3], "Debug", "002", "dbg")) << lines[3];
}

TEST(LoggerTest, UnknownLevelModeErrorAndNoTimeStamp) {
  CLogger logger;
  logger.Init("App", 0, "", 1);
  StdoutCapture capture;
  // Without a time stamp; an unknown level writes no code block at all.
  EXPECT_EQ(0, logger.writeLog(7, "999", "msg"));
  logger.setLogMode(5);
  EXPECT_EQ(-1, logger.writeLog(1, "101", "lost"));
  EXPECT_EQ("<[App][App]><[msg]>\nLog mode error!\n", capture.str());
}

TEST(LoggerTest, FormatPath) {
  EXPECT_EQ("", CLogger::formatPath(""));
  EXPECT_EQ("logs/", CLogger::formatPath("logs"));
  EXPECT_EQ("logs/", CLogger::formatPath("logs/"));
  EXPECT_EQ("c:\\logs\\", CLogger::formatPath("c:\\logs\\"));
}

TEST(LoggerTest, FileModeRollsOverDaily) {
  vortm::testing::TempDir dir;
  DatedLogger logger;
  logger.Init("Vor_Text_Mining", 1, dir.path(), 0);
  EXPECT_EQ(0, logger.LogWarn("101", "first"));
  EXPECT_EQ(0, logger.LogInfo("001", "second"));
  std::string day1 = dir.file("Vor_Text_Mining_20261112.log");
  EXPECT_EQ(day1, logger.getLogFile());
  logger.m_date = 20261113;
  EXPECT_EQ(0, logger.LogError("301", "third"));
  std::string day2 = dir.file("Vor_Text_Mining_20261113.log");
  EXPECT_EQ(day2, logger.getLogFile());

  auto text1 = vortm::testing::readFile(day1);
  auto text2 = vortm::testing::readFile(day2);
  EXPECT_NE(std::string::npos, text1.find("<[WarnMsg][first]>\n"));
  EXPECT_NE(std::string::npos, text1.find("<[InfoMsg][second]>\n"));
  EXPECT_EQ(std::string::npos, text1.find("third"));
  EXPECT_NE(std::string::npos, text2.find("<[ErrorCode][301]><[ErrorMsg][third]>\n"));

  // A folder that cannot hold the file is reported on standard output.
  DatedLogger broken;
  broken.Init("X", 1, dir.file("missing/sub"), 0);
  StdoutCapture capture;
  EXPECT_EQ(-1, broken.LogWarn("101", "x"));
  EXPECT_EQ("Open log file error\n", capture.str());
}

TEST(LoggerTest, RecordsOfThreadsNeverInterleave) {
  LoggerProxy* logger = gfn_pLoggerInstance(0, "", 0);
  StdoutCapture capture;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([logger, t] {
      for (int i = 0; i < 50; ++i) logger->LogInfo("001", "thread " + std::to_string(t));
    });
  }
  for (auto& th : threads) th.join();
  auto lines = capture.lines();
  ASSERT_EQ(200u, lines.size());
  for (const auto& line : lines) {
    EXPECT_TRUE(std::regex_match(line, std::regex(".*<\\[InfoMsg\\]\\[thread [0-3]\\]>"))) << line;
  }
}

}  // namespace
