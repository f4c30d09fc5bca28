// `vorelin classify --target`: scores for targets with the shipped
// target-aware model, the note for texts without a target, and targets
// taken from a TSV column.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TestSupport.h"

using namespace vortm::testing;

TEST(TargetCliTest, ScoresForTargetsAndNotesMissingOnes) {
  const std::string text = "菜很好吃，但是服务太差";
  CommandRun bad = runCli("classify --quiet --target 服务 '" + text + "'");
  CommandRun good = runCli("classify --quiet --target 菜 '" + text + "'");
  ASSERT_EQ(0, bad.code);
  ASSERT_EQ(0, good.code);
  EXPECT_LT(scoreOf(bad.out), 0.0);
  EXPECT_GT(scoreOf(good.out), 0.0);
  EXPECT_EQ(good.out.substr(good.out.find('\t')), "\t" + text + "\n");

  // Lines from standard input, with CRLF and a BOM; the empty line keeps its
  // place; no target in the second text gives 0.0 and a note.
  CommandRun lines = runCli("classify --quiet --target 服务 --target 物流",
                            "\xEF\xBB\xBF" + text + "\r\n质量很好\r\n\r\n物流很快\r\n", true);
  EXPECT_EQ(0, lines.code);
  EXPECT_NE(lines.out.find("line 2: no target occurs"), std::string::npos);
  std::vector<std::string> out;
  for (const std::string& line : splitLines(lines.out))
    if (line.find('\t') != std::string::npos) out.push_back(line);
  ASSERT_EQ(out.size(), 4u) << lines.out;
  EXPECT_LT(scoreOf(out[0]), 0.0);
  EXPECT_EQ(out[1], "0.000000\t质量很好");
  EXPECT_EQ(out[2], "\t");
  EXPECT_GT(scoreOf(out[3]), 0.0);
}

TEST(TargetCliTest, TargetsFromAColumnAndUsageErrors) {
  TempDir dir;
  writeFile(dir.file("in.tsv"), "7\t菜\t菜很好吃，但是服务太差\n8\t服务, \t菜很好吃，但是服务太差\n9\t菜\n");
  CommandRun run = runCli("classify --quiet --targets-from 2 --input " + dir.file("in.tsv"));
  EXPECT_EQ(1, run.code);  // the third line has no text column
  std::vector<std::string> out = splitLines(run.out);
  ASSERT_EQ(out.size(), 2u);
  EXPECT_GT(scoreOf(out[0]), 0.0);
  EXPECT_LT(scoreOf(out[1]), 0.0);

  EXPECT_EQ(2, runCli("classify --target").code);
  EXPECT_EQ(2, runCli("classify --target 菜 --targets-from 1").code);
  EXPECT_EQ(2, runCli("classify --targets-from 0").code);
  EXPECT_EQ(2, runCli("classify --target 菜 --threads 2 x").code);
  EXPECT_EQ(1, runCli("classify --target 菜 --config /nonexistent x").code);
  CommandRun help = runCli("classify --target x --help");
  EXPECT_EQ(0, help.code);
  EXPECT_NE(help.out.find("--targets-from"), std::string::npos);
}
