#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TestSupport.h"
#include "common/Logger.h"

using namespace vortm::common;
using namespace vortm::testing;

namespace {

// A logger whose date the test sets, to exercise the daily roll-over.
struct DatedLogger : CLogger {
  int m_date = 20261112;
  int currentDateKey() const override { return m_date; }
};

TEST(LoggerTest, ProcessLoggerRecordsNeverInterleave) {
  LoggerProxy* logger = gfn_pLoggerInstance(0, "", 0);
  // Later calls ignore their arguments and return the same logger.
  EXPECT_EQ(logger, gfn_pLoggerInstance(1, "/nonexistent", 1));
  StdoutCapture capture;
  onThreads(4, [logger](int t) {
    for (int i = 0; i < 50; ++i) logger->LogInfo("001", "thread " + std::to_string(t));
  });
  EXPECT_EQ(0, logger->LogDebug("002", "dbg"));
  auto lines = capture.lines();
  ASSERT_EQ(201u, lines.size());
  EXPECT_TRUE(isLogRecord(lines[200], "Debug", "002", "dbg")) << lines[200];
  for (size_t i = 0; i < 200; ++i) {
    const std::string msg = "thread " + lines[i].substr(lines[i].size() - 3, 1);
    EXPECT_TRUE(isLogRecord(lines[i], "Info", "001", msg) && msg >= "thread 0" && msg <= "thread 3") << lines[i];
  }
}

TEST(LoggerTest, FileModeRollsOverDaily) {
  TempDir dir;
  DatedLogger logger;
  logger.Init("Vor_Text_Mining", 1, dir.path(), 1);
  EXPECT_TRUE(logger.LogWarn("101", "first") == 0 && logger.LogInfo("001", "second") == 0);
  logger.m_date = 20261113;
  EXPECT_EQ(0, logger.LogError("301", "third"));
  EXPECT_EQ("<[App][Vor_Text_Mining]><[WarnCode][101]><[WarnMsg][first]>\n"
            "<[App][Vor_Text_Mining]><[InfoCode][001]><[InfoMsg][second]>\n",
            readFile(dir.file("Vor_Text_Mining_20261112.log")));
  EXPECT_EQ("<[App][Vor_Text_Mining]><[ErrorCode][301]><[ErrorMsg][third]>\n",
            readFile(dir.file("Vor_Text_Mining_20261113.log")));
  // A folder gains one separator unless it ends in one or is empty.
  for (const char* path : {"", "logs/", "c:\\logs\\"}) EXPECT_EQ(path, CLogger::formatPath(path));
}

TEST(LoggerTest, UnknownLevelAndFailuresOnStandardOutput) {
  CLogger plain, broken;
  plain.Init("App", 0, "", 1);
  broken.Init("X", 1, "/nonexistent/folder", 0);
  StdoutCapture capture;
  // Without a time stamp an unknown level writes no code block at all; a bad mode, or a folder that cannot
  // hold the file, is reported.
  EXPECT_EQ(0, plain.writeLog(7, "999", "msg"));
  EXPECT_EQ(-1, broken.LogWarn("101", "x"));
  plain.setLogMode(5);
  EXPECT_EQ(-1, plain.writeLog(1, "101", "lost"));
  EXPECT_EQ("<[App][App]><[msg]>\nOpen log file error\nLog mode error!\n", capture.str());
}

}  // namespace
