// vorelin rules and vorelin corpus label, as a user runs them.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TestSupport.h"

using namespace vortm::testing;

namespace {

const std::string kRules = VORELIN_SOURCE_DIR "/models/rules/complaints.xml";

TEST(RulesCorpusCliTest, RulesClassifyComplaintsPerLine) {
  CommandRun r = runCli("rules --rules " + kRules + " 快递太慢了，等了一个星期 物流很快 价格太贵了，不值 东西不错");
  ASSERT_EQ(0, r.code);
  auto out = splitLines(r.out);
  ASSERT_EQ(4u, out.size());
  EXPECT_EQ(0u, out[0].find("complaint/delivery\t0.")) << out[0];
  EXPECT_EQ("-\t0\t物流很快", out[1]);  // praise vetoes the delivery rule
  EXPECT_EQ(0u, out[2].find("complaint/price\t0.")) << out[2];
  EXPECT_EQ("-\t0\t东西不错", out[3]);

  // Standard input with a byte order mark and CRLF; empty lines stay lines.
  const std::string input = "\xEF\xBB\xBF客服态度差，退货不处理\r\n\r\n快递慢，质量也差\r\n";
  CommandRun piped = runCli("rules --all --rules " + kRules, input);
  ASSERT_EQ(0, piped.code);
  out = splitLines(piped.out);
  ASSERT_EQ(3u, out.size());
  EXPECT_EQ(0u, out[0].find("complaint/service:0.")) << out[0];
  EXPECT_EQ("-\t0\t", out[1]);
  EXPECT_NE(std::string::npos, out[2].find("complaint/delivery:")) << out[2];
  EXPECT_NE(std::string::npos, out[2].find(",complaint/quality:")) << out[2];
  EXPECT_EQ(out[2].substr(out[2].size() - 12), "质量也差") << "text kept without CR";
  // Threads change nothing but the speed.
  std::string many;
  for (int i = 0; i < 200; ++i) many += (i % 3 ? "快递太慢，客服不理\n" : "价格贵了" + std::to_string(i) + "\n");
  CommandRun one = runCli("rules --rules " + kRules, many);
  CommandRun two = runCli("rules --threads 2 --rules " + kRules, many);
  EXPECT_EQ(200u, splitLines(one.out).size());
  EXPECT_EQ(one.out, two.out);

  // Options from a key-value file; the command line wins over it.
  TempDir dir;
  writeFile(dir.file("opts.conf"), "# rule options\nrules = " + kRules + "\nall = true\nthreads = 9999\n");
  EXPECT_EQ(2, runCli("rules --options " + dir.file("opts.conf") + " x").code);
  CommandRun opts = runCli("rules --threads 2 --options " + dir.file("opts.conf") + " 快递太慢");
  EXPECT_EQ(0, opts.code);
  EXPECT_EQ(0u, opts.out.find("complaint/delivery:0.")) << opts.out;
  writeFile(dir.file("bad.conf"), "rules = x\nthreads\n");
  CommandRun bad = runCli("rules --options " + dir.file("bad.conf") + " x", "", true);
  EXPECT_EQ(2, bad.code);
  EXPECT_NE(std::string::npos, bad.out.find("bad.conf: line 2: expected key = value")) << bad.out;

  EXPECT_EQ(2, runCli("rules x").code);
  EXPECT_EQ(2, runCli("rules --rules " + kRules + " --input f.txt x").code);
  writeFile(dir.file("broken.xml"), "<rules><rule><classid>c</classid></rule>");
  CommandRun broken = runCli("rules --rules " + dir.file("broken.xml") + " x", "", true);
  EXPECT_EQ(1, broken.code);
  EXPECT_NE(std::string::npos, broken.out.find("Failed to Parse Rule File" + dir.file("broken.xml"))) << broken.out;
  EXPECT_EQ(1, runCli("rules --rules " + kRules + " --config /no/such.xml x").code);
}

TEST(RulesCorpusCliTest, CorpusLabelWritesConfidentLinesInOrder) {
  const std::string input =
      "\xEF\xBB\xBF质量很好，非常满意，推荐\r\n东西收到了\r\n\r\n太差了，非常失望，不会再买\r\n"
      "great product, really love it\n好\n";
  // The strict bounds are on the plain lexicon scorer's scale.
  const std::string plain = " --config " + std::string(VORELIN_BUILD_DIR) + "/models/default/lexicon_utf8.xml";
  CommandRun r = runCli("corpus label" + plain, input, false);
  ASSERT_EQ(0, r.code);
  // One polar word alone ("好") scores exactly 0.25 and stays out.
  EXPECT_EQ("1\t质量很好，非常满意，推荐\n-1\t太差了，非常失望，不会再买\n1\tgreat product, really love it\n", r.out);
  CommandRun counts = runCli("corpus label --output /dev/null" + plain, input, true);
  EXPECT_NE(std::string::npos, counts.out.find("6 lines, 5 texts: 2 positive, 1 negative, 2 left out")) << counts.out;

  std::string many;
  for (int i = 0; i < 300; ++i) many += i % 2 ? "非常满意，很好 " + std::to_string(i) + "\n" : "太差了，失望 " + std::to_string(i) + "\n";
  TempDir dir;
  writeFile(dir.file("in.txt"), many);
  CommandRun one = runCli("corpus label --threads 1 --input " + dir.file("in.txt") + plain);
  CommandRun two =
      runCli("corpus label --threads 2 --input " + dir.file("in.txt") + " --output " + dir.file("out.tsv") + plain);
  ASSERT_EQ(0, two.code);
  EXPECT_EQ(300u, splitLines(one.out).size());
  EXPECT_EQ(one.out, readFile(dir.file("out.tsv")));
  EXPECT_EQ(0u, one.out.find("-1\t太差了，失望 0\n1\t非常满意，很好 1\n"));

  for (const char* usage : {"corpus", "corpus relabel", "corpus label extra", "corpus label --threads x"})
    EXPECT_EQ(2, runCli(usage).code) << usage;
  EXPECT_EQ(1, runCli("corpus label --input /no/such.txt").code);
  EXPECT_EQ(1, runCli("corpus label --config /no/such.xml", "x\n").code);
  // A configuration whose classifier has no lexicon scorer cannot label.
  writeFile(dir.file("noscorer.xml"),
            "<number_senti_classifiers><c><identifier>lexcion_senti_classifier</identifier><param><text_analyzer>"
            "<analyzer><tokenizers><t><identifier>basicTokenzier</identifier><param><encode>utf-8</encode></param>"
            "</t></tokenizers></analyzer></text_analyzer></param></c></number_senti_classifiers>");
  CommandRun noScorer = runCli("corpus label --config " + dir.file("noscorer.xml"), "x\n", true);
  EXPECT_EQ(1, noScorer.code);
  EXPECT_NE(std::string::npos, noScorer.out.find("no classifier with a text analyzer and a lexicon scorer"));
}

}  // namespace
