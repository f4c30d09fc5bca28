#include <gtest/gtest.h>

#include <map>
#include <string>

#include "TestSupport.h"
#include "utility/BasicKeyValueParser.h"
#include "utility/Utility.h"

using vortm::utility::BasicKeyValueParser;
using vortm::utility::Utility;
using KV = std::map<std::string, std::string>;

namespace {

TEST(KeyValueParserTest, CommentsBlanksTrimmingAndDuplicates) {
  BasicKeyValueParser parser;
  KV out;
  const std::string text =
      "\xEF\xBB\xBF# model settings\r\n"
      "\n"
      "   \t\n"
      "  threads =  4 \r\n"
      "\t# indented comment\n"
      "topic = #today# is=fine\n"
      "empty =\n"
      "threads=2\n"
      "last = no newline";
  ASSERT_TRUE(parser.parseText(text, out)) << parser.getError();
  EXPECT_EQ((KV{{"threads", "2"}, {"topic", "#today# is=fine"}, {"empty", ""}, {"last", "no newline"}}), out);
  EXPECT_TRUE(parser.getError().empty());
  EXPECT_TRUE(parser.parseText("", out));
  EXPECT_TRUE(parser.parseText("\n\n# only comments\n", out));
}

TEST(KeyValueParserTest, MalformedLinesNameTheirLine) {
  struct Case {
    std::string text;
    int line;
    std::string error;
  } cases[] = {
      {"a = 1\n\njust words\nb = 2\n", 3, "line 3: expected key = value"},
      {"# c\n = value\n", 2, "line 2: empty key"},
      {"two words = x\n", 1, "line 1: blank or zero byte inside the key 'two words'"},
      {std::string("a\0b = 1\n", 8), 1, std::string("line 1: blank or zero byte inside the key 'a\0b'", 47)},
  };
  for (const Case& c : cases) {
    BasicKeyValueParser parser;
    KV out;
    EXPECT_FALSE(parser.parseText(c.text, out));
    EXPECT_EQ(c.line, parser.getErrorLine());
    EXPECT_EQ(c.error, parser.getError());
  }
  // Pairs before the bad line stay, those behind it are not read.
  BasicKeyValueParser parser;
  KV out;
  parser.parseText("a = 1\nbroken\nb = 2\n", out);
  EXPECT_EQ((KV{{"a", "1"}}), out);
  // A later good parse clears the error.
  EXPECT_TRUE(parser.parseText("c = 3", out));
  EXPECT_EQ(0, parser.getErrorLine());
}

TEST(KeyValueParserTest, ConfigFilesFromDisk) {
  vortm::testing::TempDir dir;
  vortm::testing::writeFile(dir.file("ok.conf"), "# x\nencode = utf-8\nthreads = 2\n");
  vortm::testing::writeFile(dir.file("bad.conf"), "encode = utf-8\nthreads\n");
  KV out;
  EXPECT_TRUE(Utility::parseConfigFile(dir.file("ok.conf"), out));
  EXPECT_EQ((KV{{"encode", "utf-8"}, {"threads", "2"}}), out);

  vortm::testing::StdoutCapture capture;
  KV bad;
  EXPECT_FALSE(Utility::parseConfigFile(dir.file("bad.conf"), bad));
  EXPECT_FALSE(Utility::parseConfigFile(dir.file("missing.conf"), bad));
  EXPECT_FALSE(Utility::parseConfigFile(dir.path(), bad));  // a directory is no file
  auto lines = capture.lines();
  ASSERT_EQ(3u, lines.size());
  EXPECT_TRUE(vortm::testing::isLogRecord(lines[0], "Warn", "101",
                                          "Failed to Parse Config File" + dir.file("bad.conf") +
                                              ", line 2: expected key = value"))
      << lines[0];
  EXPECT_NE(std::string::npos, lines[1].find("cannot read " + dir.file("missing.conf")));
}

}  // namespace
