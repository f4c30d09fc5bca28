// The vorelin program as a user runs it: arguments, standard input, exit
// codes, and the shipped default model.
#include <gtest/gtest.h>
#include <filesystem>
#include <string>
#include <vector>

#include "TestSupport.h"

using namespace vortm::testing;

namespace {

std::vector<std::string> lines(const std::string& text) { return splitLines(text); }

TEST(CliTest, UsageAndExitCodes) {
  EXPECT_EQ(0, runCli("--help").code);
  for (const char* usage : {"", "frobnicate", "classify --no-such-option x", "classify --threads 0 x",
                            "classify --format xml x", "classify --config",
                            "dict build --encoding latin1 --out x.dict list.txt", "eval"})
    EXPECT_EQ(2, runCli(usage).code) << usage;
  EXPECT_EQ(1, runCli("classify --input /no/such/input.txt").code);
  EXPECT_EQ(1, runCli("dict lookup --encoding utf-8 --dict /no/such.dict word").code);
}

TEST(CliTest, DictionaryBuildAndLookupInBothEncodings) {
  TempDir dir;
  // A byte order mark must keep the first word and the first directive.
  writeFile(dir.file("plain.txt"), "\xEF\xBB\xBF酒店 523 n\r\n# general words\r\n服务\r\n\r\n");
  writeFile(dir.file("senti.txt"),
            "\xEF\xBB\xBF#! tag POSITIVE\n好\n服务 CH_WORD NEGATIVE\n#! tag NOT_NEGATIVE\n还行\n不 2 15\n");
  for (const char* enc : {"utf-8", "gbk"}) {
    std::string dict = dir.file(std::string("d_") + enc);
    CommandRun build = runCli(std::string("dict build --quiet --encoding ") + enc + " --out " + dict + " " +
                        dir.file("plain.txt") + " " + dir.file("senti.txt"));
    ASSERT_EQ(0, build.code) << enc;
    CommandRun lookup = runCli(std::string("dict lookup --encoding ") + enc + " --dict " + dict + " 酒店 服务 好 还行 不 酒 无");
    ASSERT_EQ(0, lookup.code);
    // A later list replaces an earlier entry; a prefix is not a word.
    EXPECT_EQ((std::vector<std::string>{"酒店\tCH_WORD\tPLAIN", "服务\tCH_WORD\tNEGATIVE", "好\tCH_WORD\tPOSITIVE",
                                        "还行\tCH_WORD\tNOT_NEGATIVE", "不\tCH_WORD\tNEGATION", "酒\tabsent",
                                        "无\tabsent"}),
              lines(lookup.out))
        << enc;
  }
  writeFile(dir.file("bad.txt"), "#! tag NOSUCHTAG\nword\n");
  EXPECT_EQ(1, runCli("dict build --encoding utf-8 --out " + dir.file("x") + " " + dir.file("bad.txt")).code);
}

TEST(CliTest, ClassifyKeepsLinesAndOrder) {
  // Empty lines pass through as "\t" (see CliHardeningTest); in JSON an
  // empty text has no score.
  CommandRun json = runCli("classify --quiet --format jsonl 'say \"great\"' ''");
  auto jl = lines(json.out);
  ASSERT_EQ(2u, jl.size());
  EXPECT_EQ(0u, jl[0].find("{\"text\": \"say \\\"great\\\"\", \"score\": 0.175441"));
  EXPECT_EQ("{\"text\": \"\", \"score\": null}", jl[1]);

  // Many threads over one handle keep the input order.
  std::string input;
  for (int i = 0; i < 300; ++i) input += (i % 3 == 0 ? "wonderful stay " : i % 3 == 1 ? "terrible noise " : "") +
                                         std::to_string(i) + "\n";
  CommandRun one = runCli("classify --quiet", input);
  CommandRun four = runCli("classify --quiet --threads 4", input);
  EXPECT_EQ(0, four.code);
  EXPECT_EQ(one.out, four.out);
  EXPECT_EQ(300u, lines(four.out).size());
}

TEST(CliTest, DefaultModelSigns) {
  // The model's encodings agree through the C functions (WeightedModelTest);
  // here the signs as a user sees them, negation included.
  const std::vector<std::pair<std::string, int> > cases = {
      {"这家酒店的服务非常好，房间干净整洁。", 1}, {"菜太难吃了，服务员态度也很差。", -1},
      {"Terrible service, I will never come back.", -1}, {"The food was good.", 1},
      {"The food was not good.", -1}};
  std::string input;
  for (const auto& c : cases) input += c.first + "\n";
  CommandRun u = runCli("classify --quiet", input);
  ASSERT_EQ(0, u.code);
  auto ul = lines(u.out);
  ASSERT_EQ(cases.size(), ul.size());
  for (size_t i = 0; i < cases.size(); ++i)
    EXPECT_EQ(cases[i].second, (scoreOf(ul[i]) > 0) - (scoreOf(ul[i]) < 0)) << ul[i];
  EXPECT_LT(scoreOf(ul[4]), scoreOf(ul[3]) - 0.05);

  CommandRun tokens = runCli("tokenize --quiet 'not good'");
  EXPECT_EQ("not\t0\t2\tEN_WORD\tEN_NEGATION\nNOT_good\t4\t7\tEN_WORD\tNOT_POSITIVE\n\n", tokens.out);
}

}  // namespace

TEST(CliTest, EveryShippedConfigurationLoadsAndScores) {
  // Each model's build rules fill templates shared with other models; a
  // template change once left a configuration naming a file it never had.
  namespace fs = std::filesystem;
  const std::string praiseZh = "质量很好，非常满意，推荐购买！";
  const std::string praiseEn = "a wonderful, moving film and I loved it";
  int seen = 0;
  const fs::path root = std::string(VORELIN_BUILD_DIR) + "/models";
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    const std::string path = entry.path().string();
    // Judge by the path below the models folder: the checkout's own path may
    // hold any of these words. Target-aware configurations are not reached
    // by the C functions, and the install folder holds copies with relative
    // paths.
    const std::string rel = fs::relative(entry.path(), root).generic_string();
    if (entry.path().extension() != ".xml" || rel.rfind("install/", 0) == 0 || rel.rfind("target/", 0) == 0 ||
        rel.find("CMakeFiles/") != std::string::npos)
      continue;
    const bool gbk = rel.find("gbk") != std::string::npos;
    const std::string& praise = rel.find("_en") != std::string::npos ? praiseEn : praiseZh;
    CommandRun run = runCli("classify --quiet --config " + path + (gbk ? " --encoding gbk" : ""),
                             (gbk ? toGbk(praise) : praise) + "\n");
    ++seen;
    ASSERT_EQ(0, run.code) << path;
    ASSERT_EQ(1u, lines(run.out).size()) << path;
    EXPECT_GE(scoreOf(lines(run.out)[0]), 0.0) << path;
  }
  EXPECT_GE(seen, 12);
}
