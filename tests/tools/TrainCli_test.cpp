// vorelin train centroid and vorelin model inspect as a user runs them.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "TestSupport.h"

using namespace vortm::testing;

namespace {

const std::string kData = VORELIN_TEST_DATA_DIR;

CommandRun run(const std::string& args, bool withStderr = true) { return runCli(args, "", withStderr); }

// The configuration training wrote scores praise above and blame below zero.
void expectTrainedConfigScores(const TempDir& dir) {
  CommandRun scored = run("classify --quiet --config " + dir.file("m.xml") + " '非常满意' '很失望'", false);
  ASSERT_EQ(0, scored.code) << scored.out;
  std::vector<std::string> lines = splitLines(scored.out);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_GT(std::stod(lines[0]), 0.0);
  EXPECT_LT(std::stod(lines[1]), 0.0);
}

std::string trainArgs(const TempDir& dir, const std::string& corpus, const std::string& extra = "") {
  return "train centroid --quiet --config " + kData + "/centroid/analyzer.xml --out " + dir.file("m") + " " + extra +
         " " + corpus;
}

}  // namespace

TEST(TrainCliTest, ReproducesTheTinyModelByteForByte) {
  TempDir dir;
  CommandRun r = run(trainArgs(dir, kData + "/centroid/tiny.tsv", "--c 50 --epochs 30 --threads 3"), false);
  ASSERT_EQ(0, r.code) << r.out;
  EXPECT_NE(std::string::npos, r.out.find("trained on 20 texts")) << r.out;
  EXPECT_EQ(readFile(dir.file("m.vocab")), readFile(kData + "/centroid/tiny.vocab"));
  EXPECT_EQ(readFile(dir.file("m.centroid")), readFile(kData + "/centroid/tiny.centroid"));

  // The written configuration classifies with the new model.
  expectTrainedConfigScores(dir);

  CommandRun top = run("model inspect --top 2 " + dir.file("m.centroid"));
  ASSERT_EQ(0, top.code) << top.out;
  EXPECT_NE(std::string::npos, top.out.find("classes\t2\nfeatures\t78\nsamples\t20\n")) << top.out;
  EXPECT_NE(std::string::npos, top.out.find("top\tneg\t差\t")) << top.out;
  EXPECT_NE(std::string::npos, top.out.find("top\tpos\t好\t")) << top.out;
  CommandRun vocabulary = run("model inspect --top 1 " + dir.file("m.vocab"));
  ASSERT_EQ(0, vocabulary.code) << vocabulary.out;
  EXPECT_EQ(0u, vocabulary.out.find("vocabulary\ndocuments\t20\nwords\t78\nword\t")) << vocabulary.out;
}

TEST(TrainCliTest, LabelFormsAndBadCorpora) {
  TempDir dir;
  // Every accepted label form, a BOM, CRLF and blank lines, and the
  // "label::content" form; the result equals the plain corpus.
  std::string plain = readFile(kData + "/centroid/tiny.tsv");
  std::vector<std::string> lines = splitLines(plain);
  std::string mixed = "\xEF\xBB\xBF";
  const char* pos[] = {"1", "+1", "pos", "POS"};
  const char* neg[] = {"0", "-1", "neg", "Neg"};
  for (size_t i = 0; i < lines.size(); ++i) {
    bool positive = lines[i][0] == '1';
    std::string text = lines[i].substr(2);
    std::string label = positive ? pos[i % 4] : neg[i % 4];
    mixed += (i % 5 == 0 ? label + "::" + text : label + "\tcategory\t" + text) + "\r\n";
    if (i % 7 == 0) mixed += "\r\n";
  }
  writeFile(dir.file("mixed.tsv"), mixed);
  ASSERT_EQ(0, run(trainArgs(dir, dir.file("mixed.tsv"), "--c 50 --epochs 30")).code);
  EXPECT_EQ(readFile(dir.file("m.centroid")), readFile(kData + "/centroid/tiny.centroid"));

  const std::pair<const char*, const char*> badCorpora[] = {
      {"1\tgood\nmaybe\tso so\n", "bad.tsv:2: malformed label 'maybe'"},
      {"1\tgood\njust text\n", "bad.tsv:2: expected LABEL<TAB>TEXT"},
      {"\n\n", "no labelled text"},
      {"1\t很好\n1\t好评\n", "only one class"}};
  for (const auto& bad : badCorpora) {
    writeFile(dir.file("bad.tsv"), bad.first);
    CommandRun r = run(trainArgs(dir, dir.file("bad.tsv")));
    EXPECT_EQ(1, r.code) << bad.second;
    EXPECT_NE(std::string::npos, r.out.find(bad.second)) << r.out;
  }

  const std::vector<std::string> usages = {"train", "train forest --out x y", "train centroid --out x y",
                                           trainArgs(dir, dir.file("mixed.tsv"), "--estimator svm"),
                                           trainArgs(dir, dir.file("mixed.tsv"), "--min-df 0")};
  for (const std::string& usage : usages)
    EXPECT_EQ(2, run(usage).code) << usage;
  EXPECT_EQ(1, run("train centroid --config /no/such.xml --out x y").code);
}

TEST(TrainCliTest, TrainsWithEitherWordBuilder) {
  TempDir dir;
  // Two directions: praise words along the first, blame along the second.
  writeFile(dir.file("w.vec"), "6 2\n满意 1 0\n好评 0.9 0.1\n不错 0.8 0\n失望 0 1\n差评 0.1 0.9\n很差 0 0.8\n");
  writeFile(dir.file("w.expand"), "满意 好评:0.9;不错:0.8\n失望 差评:0.9;很差:0.8\n");
  const std::pair<std::string, std::string> kinds[] = {{"--word-vec", "w.vec"}, {"--word-expand", "w.expand"}};
  for (const auto& kind : kinds) {
    SCOPED_TRACE(kind.first);
    CommandRun r = run(trainArgs(dir, kData + "/centroid/tiny.tsv",
                                 "--c 50 --epochs 30 " + kind.first + " " + dir.file(kind.second)));
    ASSERT_EQ(0, r.code) << r.out;
    std::string xml = readFile(dir.file("m.xml"));
    std::string builder = kind.first == "--word-vec" ? "word_vec" : "word_expand";
    EXPECT_NE(std::string::npos, xml.find("<identifier>" + builder + "_doc_vec_builder</identifier>")) << xml;
    EXPECT_NE(std::string::npos, xml.find("<" + builder + "_file>" + dir.file(kind.second) + "</")) << xml;
    expectTrainedConfigScores(dir);
  }
  // A vector file of one dimension, and a missing expansion file, cannot train.
  writeFile(dir.file("flat.vec"), "2 1\n满意 1\n失望 0\n");
  EXPECT_EQ(1, run(trainArgs(dir, kData + "/centroid/tiny.tsv", "--word-vec " + dir.file("flat.vec"))).code);
  EXPECT_EQ(1, run(trainArgs(dir, kData + "/centroid/tiny.tsv", "--word-expand " + dir.file("absent"))).code);
  EXPECT_EQ(2, run(trainArgs(dir, kData + "/centroid/tiny.tsv",
                             "--word-vec " + dir.file("w.vec") + " --word-expand " + dir.file("w.expand"))).code);
}

TEST(TrainCliTest, InspectRejectsWhatIsNotAModel) {
  TempDir dir;
  writeFile(dir.file("junk"), "not a model at all");
  CommandRun junk = run("model inspect " + dir.file("junk"));
  EXPECT_EQ(1, junk.code);
  EXPECT_NE(std::string::npos, junk.out.find("neither a vocabulary nor a centroid")) << junk.out;
  EXPECT_EQ(1, run("model inspect --type centroid " + kData + "/centroid/tiny.vocab").code);
  EXPECT_EQ(1, run("model inspect " + dir.file("absent")).code);
  EXPECT_EQ(2, run("model inspect").code);
  EXPECT_EQ(2, run("model frob x").code);
  // A centroid with a vocabulary that does not fit prints no top words.
  writeFile(dir.file("other.vocab"), readFile(kData + "/centroid/tiny.vocab").substr(0, 0));
  CommandRun misfit = run("model inspect --vocabulary " + dir.file("other.vocab") + " " + kData + "/centroid/tiny.centroid");
  EXPECT_EQ(1, misfit.code);
}
