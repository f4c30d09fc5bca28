// vorelin lexicon build and dump for weighted lexicons.
#include <gtest/gtest.h>

#include <string>

#include "TestSupport.h"

using vortm::testing::CommandRun;
using vortm::testing::readFile;
using vortm::testing::TempDir;
using vortm::testing::writeFile;

namespace {

CommandRun lexicon(const std::string& args) {
  return vortm::testing::runCommand(std::string(VORELIN_CLI) + " lexicon " + args + " 2>&1");
}

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

  EXPECT_EQ(0, lexicon("--help").code);
  for (const char* usage : {"", "build --out x.lex a.tsv", "build --kind label --out x.lex a.tsv",
                            "build --kind weighted a.tsv", "build --kind weighted --out x.lex",
                            "dump --encoding latin1 x.lex", "dump", "frob --kind weighted"})
    EXPECT_EQ(2, lexicon(usage).code) << usage;
}
