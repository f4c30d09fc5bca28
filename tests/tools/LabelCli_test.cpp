// vorelin lexicon (label and weighted kinds) and vorelin labels as a user runs them.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "TestSupport.h"

using namespace vortm::testing;

namespace {

TEST(LabelCliTest, LexiconBuildAndDump) {
  TempDir dir;
  // BOM, CRLF, comments, blank lines, a blank instead of a tab, a later
  // line replacing an earlier one, and one malformed value.
  writeFile(dir.file("a.txt"), "\xEF\xBB\xBF# pairs\r\n价格贵\t-0.8\r\n\r\n电池短 -0.75\r\n好\t1\r\n");
  writeFile(dir.file("b.txt"), "好\t0.5\n坏\tbad\n  # indented comment\n便宜\t1e-1\n");
  for (const char* enc : {"utf-8", "gbk"}) {
    const std::string out = dir.file(std::string("lex_") + enc);
    CommandRun build = runCli(std::string("lexicon build --kind label --encoding ") + enc + " --out " + out + " " +
                                  dir.file("a.txt") + " " + dir.file("b.txt"),
                              "", true);
    ASSERT_EQ(0, build.code) << build.out;
    EXPECT_NE(std::string::npos, build.out.find(dir.file("b.txt") + ":2: malformed value: 坏\tbad")) << build.out;
    EXPECT_NE(std::string::npos, build.out.find("4 entries written")) << build.out;
    CommandRun dump = runCli(std::string("lexicon dump --encoding ") + enc + " " + out);
    ASSERT_EQ(0, dump.code);
    std::vector<std::string> got = splitLines(dump.out);
    EXPECT_EQ(4u, got.size()) << dump.out;
    for (const char* want : {"价格贵\t-0.8", "好\t0.5", "电池短\t-0.75", "便宜\t0.1"})
      EXPECT_NE(got.end(), std::find(got.begin(), got.end(), want)) << enc << " " << want << "\n" << dump.out;
  }

  // Nothing valid, usage errors, unreadable files.
  writeFile(dir.file("bad.txt"), "# only\nword\nword\tnan\nx\t1.0abc\n");
  CommandRun none = runCli("lexicon build --kind label --out " + dir.file("x") + " " + dir.file("bad.txt"), "", true);
  EXPECT_EQ(1, none.code);
  EXPECT_NE(std::string::npos, none.out.find("bad.txt:2: expected KEY<TAB>VALUE")) << none.out;
  EXPECT_NE(std::string::npos, none.out.find("bad.txt:3: malformed value")) << none.out;
  // Usage errors of the lexicon command are LexiconCliTest's.
  EXPECT_EQ(2, runCli("lexicon build --kind label --encoding latin1 --out x a.txt").code);
  EXPECT_EQ(1, runCli("lexicon build --kind label --out x /no/such/list.txt").code);
  EXPECT_EQ(1, runCli("lexicon dump /no/such.lex").code);
  writeFile(dir.file("garbage.lex"), "\xff\xff\xff\x7f" "abc");
  EXPECT_EQ(1, runCli("lexicon dump " + dir.file("garbage.lex")).code);
}

TEST(LabelCliTest, LabelsShowEachOpinion) {
  TempDir dir;
  writeFile(dir.file("words.txt"),
            "#! tag ATTRIBUTE_21\n价格\n电池\n#! tag SENTI_20\n贵\n短\n#! tag POSITIVE\n好\n"
            "#! tag NEGATION\n不\n#! tag DEGREE_11\n很\n");
  writeFile(dir.file("lex.txt"), "价格贵\t-0.8\n短\t-0.3\n");
  ASSERT_EQ(
      0, runCli("dict build --quiet --encoding utf-8 --out " + dir.file("d.dict") + " " + dir.file("words.txt")).code);
  ASSERT_EQ(0,
            runCli("lexicon build --quiet --kind label --out " + dir.file("l.lex") + " " + dir.file("lex.txt")).code);
  writeFile(dir.file("c.xml"), lexiconConfig("utf-8", dir.file("d.dict"), "", labelScorerBlock(dir.file("l.lex"))));
  CommandRun args = runCli("labels --quiet --config " + dir.file("c.xml") + " 价格不贵 电池很短，好 没有");
  ASSERT_EQ(0, args.code);
  EXPECT_EQ((std::vector<std::string>{"[价格]\t不/NEGATION [贵]\t+0.4000", "", "[电池]\t很/DEGREE_11 [短]\t-0.3600",
                                      "-\t[好]\t+1.0000", "", ""}),
            splitLines(args.out));
  // Standard input, CRLF line ends dropped.
  CommandRun in = runCli("labels --quiet --config " + dir.file("c.xml"), "价格贵\r\n\r\n");
  ASSERT_EQ(0, in.code);
  EXPECT_EQ((std::vector<std::string>{"[价格]\t[贵]\t-0.8000", "", ""}), splitLines(in.out));

  // A configuration without a label scorer, and one that does not parse.
  CommandRun plain = runCli("labels --config " + std::string(VORELIN_TEST_DATA_DIR) + "/lexicon_basic.xml x", "", true);
  EXPECT_EQ(1, plain.code);
  EXPECT_NE(std::string::npos, plain.out.find("has no classifier with senti_label_senti_scorer")) << plain.out;
  EXPECT_EQ(1, runCli("labels --config /no/such.xml x").code);
}

}  // namespace

namespace {

CommandRun lexicon(const std::string& args) { return runCli("lexicon " + args, "", true); }

}  // namespace

TEST(LexiconCliTest, BuildAndDumpRoundTrip) {
  TempDir dir;
  // BOM, CRLF, comments, blank lines, blanks instead of a tab; a later line wins.
  writeFile(dir.file("a.tsv"), "\xEF\xBB\xBF# weights\r\ngood\t1.5\r\n\r\nbad   -0.7\n好\t2\ngood\t0.1\n");
  writeFile(dir.file("b.tsv"), "差\t-1e0\n");
  const std::string lex = dir.file("a.lex");
  for (const char* enc : {"utf-8", "gbk"}) {
    CommandRun built = lexicon(std::string("build --kind weighted --encoding ") + enc + " --out " + lex + " " +
                               dir.file("a.tsv") + " " + dir.file("b.tsv"));
    ASSERT_EQ(0, built.code) << built.out;
    EXPECT_NE(std::string::npos, built.out.find("4 weights written")) << built.out;
    CommandRun dumped = lexicon(std::string("dump --encoding ") + enc + " " + lex);
    ASSERT_EQ(0, dumped.code);
    // Map order is byte order of the stored words, which differs by encoding.
    const std::string expected = std::string(enc) == "gbk" ? "bad\t-0.7\ngood\t0.1\n差\t-1\n好\t2\n"
                                                           : "bad\t-0.7\ngood\t0.1\n好\t2\n差\t-1\n";
    EXPECT_EQ(expected, dumped.out) << enc;
  }
  // What dump prints builds the same file again.
  writeFile(dir.file("dump.tsv"), lexicon("dump --encoding gbk " + lex).out);
  ASSERT_EQ(0, lexicon("build --kind weighted --encoding gbk --out " + dir.file("again.lex") + " " +
                       dir.file("dump.tsv"))
                   .code);
  EXPECT_EQ(readFile(lex), readFile(dir.file("again.lex")));
}

TEST(LexiconCliTest, ErrorsAndExitCodes) {
  TempDir dir;
  const std::string out = " --out " + dir.file("x.lex") + " ";
  const std::pair<const char*, const char*> bad[] = {
      {"word\n", ":1: expected 'word<TAB>weight', got 'word'"},
      {"ok\t1\nword\tabc\n", ":2: weight of 'word' is not a finite number: 'abc'"},
      {"word\tnan\n", ":1: weight of 'word' is not a finite number: 'nan'"},
      {"word\t1e999\n", "not a finite number"},
      {"word 1 2\n", "expected 'word<TAB>weight'"},
  };
  for (const auto& b : bad) {
    writeFile(dir.file("bad.tsv"), b.first);
    CommandRun run = lexicon("build --kind weighted" + out + dir.file("bad.tsv"));
    EXPECT_EQ(1, run.code) << b.first;
    EXPECT_NE(std::string::npos, run.out.find(b.second)) << run.out;
  }
  CommandRun missing = lexicon("build --kind weighted" + out + dir.file("none.tsv"));
  EXPECT_EQ(1, missing.code);
  EXPECT_NE(std::string::npos, missing.out.find("cannot read " + dir.file("none.tsv")));

  writeFile(dir.file("corrupt.lex"), "\x05\x00\x00");
  CommandRun corrupt = lexicon("dump " + dir.file("corrupt.lex"));
  EXPECT_EQ(1, corrupt.code);
  EXPECT_NE(std::string::npos, corrupt.out.find("cannot load weighted lexicon"));

  for (const char* usage : {"", "build --out x.lex a.tsv", "build --kind frob --out x.lex a.tsv",
                            "build --kind weighted a.tsv", "build --kind weighted --out x.lex",
                            "dump --encoding latin1 x.lex", "dump", "frob --kind weighted"})
    EXPECT_EQ(2, lexicon(usage).code) << usage;
}
