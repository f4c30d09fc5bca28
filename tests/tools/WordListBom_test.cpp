// Word lists saved by editors that write a UTF-8 byte order mark.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TestSupport.h"

using vortm::testing::CommandRun;
using vortm::testing::runCommand;
using vortm::testing::splitLines;
using vortm::testing::TempDir;
using vortm::testing::writeFile;

TEST(WordListTest, ByteOrderMarkKeepsTheFirstWordAndTheFirstDirective) {
  TempDir dir;
  const std::string bom = "\xEF\xBB\xBF";
  writeFile(dir.file("words.txt"), bom + "酒店 523 n\n服务\n");
  writeFile(dir.file("senti.txt"), bom + "#! tag POSITIVE\n好\n");
  const std::string cli = VORELIN_CLI;
  const std::string dict = dir.file("d");
  ASSERT_EQ(0, runCommand(cli + " dict build --quiet --encoding utf-8 --out " + dict + " " + dir.file("words.txt") +
                          " " + dir.file("senti.txt") + " 2>&1")
                   .code);
  CommandRun lookup = runCommand(cli + " dict lookup --encoding utf-8 --dict " + dict + " 酒店 服务 好");
  ASSERT_EQ(0, lookup.code);
  EXPECT_EQ((std::vector<std::string>{"酒店\tCH_WORD\tPLAIN", "服务\tCH_WORD\tPLAIN", "好\tCH_WORD\tPOSITIVE"}),
            splitLines(lookup.out));
}
