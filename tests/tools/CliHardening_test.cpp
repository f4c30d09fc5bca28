// vorelin as a user meets it on bad input: exit codes that name the cause,
// warnings about a configuration that would spoil every score, output that
// stays valid and streams, and explanations that match the scores.
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <regex>
#include <string>
#include <vector>

#include "TestSupport.h"

using namespace vortm::testing;

namespace {

struct CliRun {
  int code;
  std::string out;
  std::string err;
};

// Runs the program with a shell command line and the given standard input.
CliRun run(const std::string& args, const std::string& input = "", const std::string& stdoutTo = "") {
  TempDir dir;
  writeFile(dir.file("in"), input);
  std::string cmd = std::string(VORELIN_CLI) + " " + args + " < " + dir.file("in") + " 2> " + dir.file("err");
  if (!stdoutTo.empty()) cmd += " > " + stdoutTo;
  vortm::testing::CommandRun r = vortm::testing::runCommand(cmd);
  return {r.code, r.out, readFile(dir.file("err"))};
}

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

size_t countOf(const std::string& text, const std::string& part) {
  size_t n = 0;
  for (size_t p = text.find(part); p != std::string::npos; p = text.find(part, p + 1)) ++n;
  return n;
}

std::string defaultModel() { return std::string(VORELIN_BUILD_DIR) + "/models/default/default_utf8.xml"; }

// The default model with some text replaced, as a new configuration file.
std::string editedModel(const TempDir& dir, const std::string& name,
                        const std::vector<std::pair<std::string, std::string> >& edits) {
  std::string xml = readFile(defaultModel());
  for (const auto& e : edits) {
    size_t at = xml.find(e.first);
    EXPECT_NE(std::string::npos, at) << e.first;
    if (at != std::string::npos) xml.replace(at, e.first.size(), e.second);
  }
  writeFile(dir.file(name), xml);
  return dir.file(name);
}

std::string lexiconModel() { return std::string(VORELIN_BUILD_DIR) + "/models/default/lexicon_utf8.xml"; }

// A model without its position_weighter block, as a new configuration file.
std::string withoutPositionWeighter(const TempDir& dir, const std::string& model) {
  std::string xml = readFile(model);
  size_t a = xml.find("<position_weighter>");
  size_t b = xml.find("</position_weighter>");
  xml.erase(a, b + std::string("</position_weighter>").size() - a);
  writeFile(dir.file("nopw.xml"), xml);
  return dir.file("nopw.xml");
}

// What the shipped model prints for "good" and "bad".
const std::string kGoodBad = "0.042420\tgood\n-0.385157\tbad\n";

TEST(CliHardeningTest, FailuresExitNonZeroNamingTheCause) {
  TempDir dir;
  CliRun full = run("classify --quiet good", "", "/dev/full");
  EXPECT_EQ(1, full.code);
  EXPECT_TRUE(has(full.err, "cannot write output: No space left on device")) << full.err;

  CliRun folder = run("classify --quiet --input " + dir.path());
  EXPECT_EQ(1, folder.code);
  EXPECT_TRUE(has(folder.err, "cannot open " + dir.path() + ": Is a directory")) << folder.err;
  CliRun dictFolder = run("dict build --encoding utf-8 --out " + dir.file("x.dict") + " " + dir.path());
  EXPECT_EQ(1, dictFolder.code);
  EXPECT_TRUE(has(dictFolder.err, "Is a directory")) << dictFolder.err;

  writeFile(dir.file("comments.txt"), "# only a comment\n\n");
  CliRun empty = run("dict build --encoding utf-8 --out " + dir.file("x.dict") + " " + dir.file("comments.txt"));
  EXPECT_EQ(1, empty.code);
  EXPECT_TRUE(has(empty.err, "no entries")) << empty.err;
  // Words that GBK cannot hold are skipped; with nothing left it is an error.
  writeFile(dir.file("emoji.txt"), "\xF0\x9F\x98\x80\n");
  EXPECT_EQ(1, run("dict build --encoding gbk --out " + dir.file("x.dict") + " " + dir.file("emoji.txt")).code);

  // A misspelt tag or type name stops the build, by name or after a number;
  // a jieba frequency and part of speech still pass.
  for (const char* line : {"好 CH_WORD POSITVE", "好 CH_WROD POSITIVE", "好 2 POSITVE", "好 POSITIVE"}) {
    writeFile(dir.file("typo.txt"), std::string("酒店 523 n\n") + line + "\n");
    CliRun typo = run("dict build --encoding utf-8 --out " + dir.file("x.dict") + " " + dir.file("typo.txt"));
    EXPECT_EQ(1, typo.code) << line;
    EXPECT_TRUE(has(typo.err, "typo.txt:2: unknown")) << typo.err;
  }

  writeFile(dir.file("unlabelled.tsv"), "good\nbad\n\n");
  CliRun unlabelled = run("eval --quiet " + dir.file("unlabelled.tsv"));
  EXPECT_EQ(1, unlabelled.code);
  EXPECT_TRUE(has(unlabelled.err, "has no labelled line")) << unlabelled.err;
}

TEST(CliHardeningTest, ConfigurationProblemsAreNamedByKeyAndFile) {
  TempDir dir;
  std::string bad = editedModel(dir, "bad.xml",
                                {{"<number_weight type=\"numeric\">1.0", "<number_weight type=\"numeric\">one"},
                                 {"basicTokenzier", "basicTokenizer"},
                                 {"<quota_penalty type=\"numeric\">", "<quota_penalty>"}});
  CliRun r = run("classify --quiet --config " + bad + " good");
  EXPECT_EQ(1, r.code);
  EXPECT_TRUE(has(r.err, bad + ": 'number_senti_classifiers.classifier.number_weight' is read as a number, but 'one'"))
      << r.err;
  EXPECT_TRUE(has(r.err, "tokenizers.tokenizer.identifier' names an unknown identifier 'basicTokenizer'")) << r.err;
  EXPECT_TRUE(has(r.err, "position_weighter.quota_penalty' is read as a number but lacks type=\"numeric\"")) << r.err;
  // The shipped model draws no warning, and its weighted scorer falls back
  // on a default weighter: no warning, and the same scores.
  CliRun shipped = run("classify --quiet", "good\nbad\n");
  EXPECT_FALSE(has(shipped.err, "warning"));
  EXPECT_EQ(kGoodBad, shipped.out);
  CliRun weighted = run("classify --quiet --config " + withoutPositionWeighter(dir, defaultModel()), "good\nbad\n");
  EXPECT_EQ(0, weighted.code);
  EXPECT_FALSE(has(weighted.err, "warning")) << weighted.err;
  EXPECT_EQ(kGoodBad, weighted.out);

  // Without a position weighter the plain scorer lets init through and then
  // fails every text: warned up front, each line marked, exit 1.
  std::string nopw = withoutPositionWeighter(dir, lexiconModel());
  CliRun lines = run("classify --quiet --config " + nopw, "good\n\nbad\n");
  EXPECT_EQ(1, lines.code);
  EXPECT_TRUE(has(lines.err, nopw + ": 'number_senti_classifiers.classifier.param.lexcion_senti_scorer' has no "
                             "position_weighter block"))
      << lines.err;
  EXPECT_EQ("ERROR\tgood\n\t\nERROR\tbad\n", lines.out);
  EXPECT_TRUE(has(lines.err, "2 lines could not be classified (lines 1, 3)")) << lines.err;
  CliRun json = run("classify --quiet --format jsonl --config " + nopw + " good");
  EXPECT_EQ("{\"text\": \"good\", \"score\": null, \"error\": \"classification failed\"}\n", json.out);

  CliRun missing = run("classify --config " + dir.file("none.xml") + " good");
  EXPECT_EQ(1, missing.code);
  EXPECT_TRUE(has(missing.err, "cannot open " + dir.file("none.xml") + ": No such file or directory")) << missing.err;
  EXPECT_TRUE(has(missing.err, "Failed to Parse Params")) << missing.err;
  EXPECT_TRUE(has(missing.err, "cannot initialise a classifier from " + dir.file("none.xml"))) << missing.err;
}

TEST(CliHardeningTest, TextInTheOtherEncodingIsWarnedOnce) {
  std::string utf8, gbk;
  for (const char* t : {"这家酒店很好", "质量不好", "非常失望", "物流很快", "服务一般", "还会再来"}) {
    utf8 += std::string(t) + "\n";
    gbk += toGbk(t) + "\n";
  }
  const std::string warning = "lines with non-ASCII text do not read as";
  CliRun gbkIntoUtf8 = run("classify --quiet", gbk + gbk);
  EXPECT_EQ(1u, countOf(gbkIntoUtf8.err, warning)) << gbkIntoUtf8.err;
  EXPECT_TRUE(has(gbkIntoUtf8.err, "try --encoding gbk"));
  CliRun utf8IntoGbk = run("classify --quiet --encoding gbk", utf8);
  EXPECT_EQ(1u, countOf(utf8IntoGbk.err, warning)) << utf8IntoGbk.err;
  EXPECT_EQ(0u, countOf(run("classify --quiet --encoding gbk", gbk).err, warning));
  // UTF-8 text draws no warning, even with a stray bad line among it.
  EXPECT_EQ(0u, countOf(run("classify --quiet", utf8 + "\xff\xfe\n").err, warning));
}

TEST(CliHardeningTest, HelpVersionStandardInputAndEncodings) {
  // The short and the long help option alike.
  for (const std::string cmd : {"classify", "tokenize", "eval", "dict"}) {
    CliRun h = run(cmd + (cmd[1] == 'l' || cmd[1] == 'i' ? " -h" : " --help"));
    EXPECT_EQ(0, h.code) << cmd;
    EXPECT_EQ(0u, h.out.find("Usage: vorelin " + cmd)) << h.out;
    CliRun v = run(cmd + " --version");
    EXPECT_EQ(0, v.code);
    EXPECT_TRUE(std::regex_match(v.out, std::regex("vorelin [0-9]+\\.[0-9]+\\.[0-9]+\n"))) << v.out;
  }
  EXPECT_EQ(run("classify --version").out, run("--version").out);
  // "-h" among texts is still help, never a text; after "--" it is a text.
  EXPECT_TRUE(has(run("classify good -h").out, "Usage:"));
  EXPECT_EQ("0.000000\t-h\n", run("classify --quiet -- -h").out);

  CliRun dash = run("classify --quiet --input -", "good\nbad\n");
  EXPECT_EQ(0, dash.code);
  EXPECT_EQ(kGoodBad, dash.out);
  EXPECT_EQ(run("tokenize --quiet 'not good'").out, run("tokenize --quiet --input -", "not good\n").out);

  // tokenize and eval take --encoding like classify: GBK text through the
  // GBK model gives the same tokens and the same accuracy.
  const std::string text = "服务非常好";
  CliRun u = run("tokenize --quiet " + text);
  CliRun g = run("tokenize --quiet --encoding gbk --input -", toGbk(text) + "\n");
  auto ul = splitLines(u.out), gl = splitLines(g.out);
  ASSERT_EQ(ul.size(), gl.size());
  ASSERT_GE(ul.size(), 2u);
  for (size_t i = 0; i + 1 < ul.size(); ++i) {
    EXPECT_EQ(toGbk(ul[i].substr(0, ul[i].find('\t'))), gl[i].substr(0, gl[i].find('\t')));
    EXPECT_EQ(ul[i].substr(ul[i].rfind('\t')), gl[i].substr(gl[i].rfind('\t')));
  }
  const std::string set = "1\t这家酒店的服务非常好\n-1\t质量不好，很失望\n";
  CliRun eu = run("eval --quiet -", set);
  CliRun eg = run("eval --quiet --encoding gbk -", toGbk(set));
  EXPECT_EQ(0, eg.code) << eg.err;
  EXPECT_TRUE(has(eu.out, "accuracy 100.0% (2/2)")) << eu.out;
  EXPECT_EQ(eu.out, eg.out);
  EXPECT_EQ(2, run("tokenize --encoding latin1 x").code);
}

TEST(CliHardeningTest, OutputIsValidJsonAndLinesEchoWithoutCarriageReturns) {
  // Random bytes, one line in ten empty.
  std::string input;
  unsigned int seed = 17;
  for (int line = 0; line < 200; ++line) {
    int len = line % 10 == 0 ? 0 : 1 + static_cast<int>(rand_r(&seed) % 60);
    for (int i = 0; i < len; ++i) {
      char c = static_cast<char>(rand_r(&seed) % 256);
      input += c == '\n' ? ' ' : c;
    }
    input += "\n";
  }
  TempDir dir;
  CliRun random = run("classify --quiet --format jsonl --long-lines cut", input, dir.file("out.jsonl"));
  // Every line must be a JSON object in strict UTF-8, without raw control characters.
  CommandRun parsed = runCommand("/usr/bin/python3 -c \"import json, sys\n"
                                 "print(sum(1 for l in open(sys.argv[1], encoding='utf-8') if 'text' in json.loads(l)))\" " +
                                 dir.file("out.jsonl") + " 2>&1");
  EXPECT_EQ("200\n", parsed.out);
  random.out = readFile(dir.file("out.jsonl"));
  EXPECT_TRUE(has(random.out, "\\u00"));
  EXPECT_EQ("{\"text\": \"\\u00ff\\u00fe\\u0001 x\\\"y\\\\\", \"score\": 0.000000}\n",
            run("classify --quiet --format jsonl", "\xff\xfe\x01 x\"y\\\n").out);

  // GBK input comes out as UTF-8 text; a byte GBK cannot read is escaped.
  const std::string text = "这家酒店很好";
  CliRun gbk = run("classify --quiet --encoding gbk --format jsonl", toGbk(text) + "\xff\n");
  EXPECT_EQ(0u, gbk.out.find("{\"text\": \"" + text + "\\u00ff\", \"score\": 0.")) << gbk.out;

  // CRLF input: the text is echoed without its "\r", in both formats, and
  // scores as it does with LF.
  EXPECT_EQ(kGoodBad, run("classify --quiet", "good\r\nbad\r\n").out);
  CliRun crlfJson = run("classify --quiet --format jsonl", "good\r\n");
  EXPECT_EQ("{\"text\": \"good\", \"score\": 0.042420}\n", crlfJson.out);
}

// Starts the program with pipes on both ends, for a coprocess test.
struct Coprocess {
  pid_t pid = -1;
  int in = -1, out = -1;
  explicit Coprocess(const std::vector<std::string>& args) {
    int toChild[2], fromChild[2];
    if (pipe(toChild) != 0 || pipe(fromChild) != 0) return;
    pid = fork();
    if (pid == 0) {
      dup2(toChild[0], 0);
      dup2(fromChild[1], 1);
      int devnull = open("/dev/null", O_WRONLY);
      dup2(devnull, 2);
      close(toChild[1]);
      close(fromChild[0]);
      std::vector<char*> argv;
      std::string cli = VORELIN_CLI;
      argv.push_back(&cli[0]);
      std::vector<std::string> copy = args;
      for (auto& a : copy) argv.push_back(&a[0]);
      argv.push_back(nullptr);
      execv(argv[0], argv.data());
      _exit(127);
    }
    close(toChild[0]);
    close(fromChild[1]);
    in = toChild[1];
    out = fromChild[0];
  }
  // One line of answer, or "" if none came within the time.
  std::string ask(const std::string& line, int timeoutMs = 20000) {
    if (write(in, line.data(), line.size()) != static_cast<ssize_t>(line.size())) return "";
    std::string answer;
    char c;
    struct pollfd p = {out, POLLIN, 0};
    while (poll(&p, 1, timeoutMs) > 0 && read(out, &c, 1) == 1) {
      if (c == '\n') return answer;
      answer += c;
    }
    return "";
  }
  ~Coprocess() {
    if (in >= 0) close(in);
    if (out >= 0) close(out);
    if (pid > 0) waitpid(pid, nullptr, 0);
  }
};

TEST(CliHardeningTest, AnswersEachLineWhileTheInputStaysOpen) {
  for (const char* mode : {"", "--line-buffered"}) {
    std::vector<std::string> args = {"classify", "--quiet"};
    if (*mode) args.push_back(mode);
    Coprocess co(args);
    EXPECT_EQ("0.042420\tgood", co.ask("good\n")) << mode;
    EXPECT_EQ("-0.385157\tbad", co.ask("bad\n")) << mode;
  }
  EXPECT_EQ("{\"text\": \"x\", \"score\": 0.000000}",
            Coprocess({"classify", "--quiet", "--format", "jsonl"}).ask("x\n"));
}

TEST(CliHardeningTest, LongLinesAreRefusedOrCutAsAsked) {
  const std::string longLine = "good . " + std::string(40, 'x');
  CliRun refused = run("classify --quiet --max-line 16", "bad\n" + longLine + "\n");
  EXPECT_EQ(1, refused.code);
  auto lines = splitLines(refused.out);
  ASSERT_EQ(2u, lines.size());
  EXPECT_EQ("-0.385157\tbad", lines[0]);
  EXPECT_EQ(0u, lines[1].find("ERROR\t"));
  EXPECT_TRUE(has(refused.err, "1 line could not be classified (line 2)")) << refused.err;
  EXPECT_TRUE(has(run("classify --quiet --format jsonl --max-line 16", longLine + "\n").out,
                  "\"error\": \"line longer than 16 bytes\""));

  // Cut: scored on the first bytes, never half a character.
  CliRun cut = run("classify --quiet --max-line 7 --long-lines cut", longLine + "\n");
  EXPECT_EQ(0, cut.code);
  EXPECT_EQ(run("classify --quiet 'good . '").out, cut.out);
  CliRun utf8 = run("classify --quiet --max-line 8 --long-lines cut --format jsonl", "很好很好\n");
  EXPECT_EQ(0u, utf8.out.find("{\"text\": \"很好\", \"score\": ")) << utf8.out;
  EXPECT_TRUE(has(utf8.out, "\"cut\": true"));
  EXPECT_EQ(2, run("classify --max-line 0 x").code);
  EXPECT_EQ(2, run("classify --long-lines drop x").code);
}

TEST(CliHardeningTest, ExplainMatchesTheScoreAndShowsWhatActed) {
  const std::vector<std::string> texts = {"这家酒店的服务非常好，但是房间不干净。", "The food was not good.",
                                          "物流很快，包装完好，推荐购买！", "nothing here", "菜太难吃了，服务员态度也很差。"};
  std::string input;
  for (const auto& t : texts) input += t + "\n";
  auto scores = splitLines(run("classify --quiet", input).out);
  CliRun explained = run("classify --quiet --explain", input);
  EXPECT_EQ(0, explained.code);
  std::vector<std::string> blocks;
  std::string block;
  for (const std::string& line : splitLines(explained.out)) {
    if (line.empty()) {
      blocks.push_back(block);
      block.clear();
    } else {
      block += line + "\n";
    }
  }
  ASSERT_EQ(texts.size(), blocks.size());
  for (size_t i = 0; i < texts.size(); ++i) {
    auto l = splitLines(blocks[i]);
    ASSERT_GE(l.size(), 3u);
    EXPECT_EQ("text\t" + texts[i], l[0]);
    // The very score classify prints, and the words' shares add up to it.
    EXPECT_EQ("score\t" + scores[i].substr(0, scores[i].find('\t')), l[1]);
    EXPECT_EQ(0u, l[2].find("  member 1\tlexcion_senti_classifier\tweight 1\t")) << l[2];
    double sum = 0.0;
    for (const auto& line : l) {
      size_t at = line.find("contribution ");
      if (at == std::string::npos) continue;
      // The lexicon member (weight 1) by its words, the others as a whole.
      if (line.compare(0, 8, "    word") == 0 || (line.compare(0, 9, "  member ") == 0 && l[2] != line))
        sum += std::stod(line.substr(at + 13));
    }
    EXPECT_NEAR(scoreOf(scores[i]), sum, 1e-5) << blocks[i];
  }
  // The but-clause weight, the negated tag and an empty text.
  EXPECT_TRUE(has(blocks[0], "position 2 (but)")) << blocks[0];
  EXPECT_TRUE(std::regex_search(blocks[1], std::regex("word\tNOT_good\tNOT_POSITIVE\tvalue -0.25"))) << blocks[1];
  EXPECT_FALSE(has(blocks[3], "    word"));
  EXPECT_EQ("text\t\nscore\t\n\n", run("classify --quiet --explain ''").out);
}

TEST(CliHardeningTest, EvalCountsAZeroScoreAsUndecided) {
  // "the table" scores exactly 0: right for neither label.
  // The lexicon model alone: the centroid members of the default score any n-gram.
  CliRun r = run("eval --quiet --errors --config " + std::string(VORELIN_BUILD_DIR) +
                     "/models/weighted/weighted_utf8.xml -",
                 "1\tthe table\n-1\tthe table\n1\tgood\n");
  EXPECT_EQ(0, r.code);
  EXPECT_TRUE(has(r.out, "accuracy 33.3% (1/3)\tpositive 50.0%\tnegative 0.0%\tundecided 66.7%")) << r.out;
  EXPECT_EQ(2u, countOf(r.out, "miss\t+0.0000"));
}

}  // namespace
