#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "../modular/SavedBytes.h"
#include "TestSupport.h"
#include "application/CentroidSentiClassifier.h"

using namespace vortm;
using namespace vortm::testing;
using application::CentroidSentiClassifier;
using common::AutoPtr;
using modular::Centroid;

namespace {

// Vocabulary of three single characters, 好 差 不, and centroids over them.
class CentroidClassifierTest : public ::testing::Test {
 protected:
  void SetUp() override {
    writeFile(m_dir.file("v"),
              SavedBytes().u32(10).u32(3).word("5aW9", 3, 3).word("5beu", 3, 3).word("5LiN", 3, 3).bytes());
  }

  std::string centroid(const std::string& name, std::vector<double> neg, std::vector<double> pos,
                       const std::string& first = "neg", const std::string& second = "pos") {
    Centroid c;
    c.labels = {trainset::Label(first, "/"), trainset::Label(second, "/")};
    c.weights = {neg, pos};
    c.biases = {0.0, 0.0};
    EXPECT_TRUE(c.writeTo(m_dir.file(name)));
    return m_dir.file(name);
  }

  std::string config(const std::vector<std::string>& files, const std::string& extra = "") {
    std::string xml =
        "<text_analyzer><analyzer><tokenizers><t><identifier>chNGramTokenzier</identifier><param><encode>utf-8"
        "</encode><max_n type=\"int\">1</max_n></param></t></tokenizers></analyzer></text_analyzer>"
        "<doc_vec_builder><identifier>standard_doc_vec_builder</identifier><param><vocabulary_file>" +
        m_dir.file("v") + "</vocabulary_file><word_weighting_method>bool</word_weighting_method></param>"
        "</doc_vec_builder>" + extra + "<senti_centroid_files>";
    for (const std::string& f : files) xml += "<file>" + f + "</file>";
    return xml + "</senti_centroid_files>";
  }

  const configure::Parameter& parse(const std::string& xml) { return *(m_root = parseXml(xml)); }

  TempDir m_dir;
  AutoPtr<configure::Parameter> m_root;
};

}  // namespace

TEST_F(CentroidClassifierTest, ScoreFromClassScores) {
  CentroidSentiClassifier classifier;
  Centroid model;
  model.labels = {trainset::Label(" NEG ", "/"), trainset::Label("pos", "/")};
  EXPECT_NEAR(classifier.computeSentiScore(model, {0.2, 0.8}), 2.0 * (0.85 / 1.1 - 0.5), 1e-12);
  EXPECT_EQ(classifier.computeSentiScore(model, {0.4, 0.4}), 0.0);
  EXPECT_NEAR(classifier.computeSentiScore(model, {-0.5, 0.3}), 2.0 * (0.35 / 0.4 - 0.5), 1e-12);
  EXPECT_EQ(classifier.computeSentiScore(model, {-0.5, -0.3}), 0.0);
}

TEST_F(CentroidClassifierTest, ConfigFailures) {
  StdoutCapture capture;
  std::string good = centroid("good", {0.0, 1.0, 0.0}, {1.0, 0.0, 0.0});
  std::string swapped = centroid("swapped", {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, "pos", "neg");
  std::string narrow = centroid("narrow", {1.0, 0.0}, {0.0, 1.0});
  // Without a builder no centroid can be valid.
  for (const std::string& xml : {config({good, swapped}), config({narrow}), config({}),
                                 "<senti_centroid_files><f>" + good + "</f></senti_centroid_files>",
                                 std::string("<doc_vec_builder><identifier>none</identifier></doc_vec_builder>")}) {
    CentroidSentiClassifier c;
    EXPECT_FALSE(c.config(parse(xml))) << xml;
    double score = 1.0;
    EXPECT_FALSE(c.classify("好", score));
    EXPECT_EQ(score, 0.0);
  }
  std::vector<std::string> records;
  for (const std::string& line : capture.lines()) {
    if (line[0] == '<') records.push_back(line);
  }
  ASSERT_EQ(records.size(), 5u);
  EXPECT_TRUE(isLogRecord(records[0], "Warn", "101", "Failed to Load Senti Centroid from File " + swapped));
  EXPECT_TRUE(isLogRecord(records[1], "Warn", "101", "Failed to Load Senti Centroid from File " + narrow));
  EXPECT_TRUE(isLogRecord(records[2], "Warn", "101", "Error: No Senti Centroid Loaded "));
  EXPECT_TRUE(isLogRecord(records[3], "Warn", "101", "Failed to Load Senti Centroid from File " + good));
  EXPECT_TRUE(isLogRecord(records[4], "Warn", "101", "Failed to Init Doc Vector Builder"));
}

TEST_F(CentroidClassifierTest, MergeAtConfigMeanAfterUpdate) {
  StdoutCapture quiet;
  // a: 好 is positive; b: 好 leans positive, 差 negative
  std::string a = centroid("a", {0.0, 1.0, 0.0}, {1.0, 0.0, 0.0});
  std::string b = centroid("b", {0.0, 3.0, 0.0}, {4.0, 0.0, 3.0});
  CentroidSentiClassifier c;
  ASSERT_TRUE(c.config(parse(config({a, b}))));
  EXPECT_EQ(c.getModelCount(), 1u);
  double score = 0.0;
  // each file's rows are normalised, then averaged and normalised again:
  // pos is the mean of (1,0,0) and (0.8,0,0.6), that is (0.9,0,0.3)
  ASSERT_TRUE(c.classify("好", score));
  double pos = 0.9 / std::sqrt(0.9 * 0.9 + 0.3 * 0.3);
  EXPECT_NEAR(score, 2.0 * ((pos + 0.05) / (pos + 0.1) - 0.5), 1e-12);
  ASSERT_TRUE(c.classify("", score));
  EXPECT_EQ(score, 0.0);
  ASSERT_TRUE(c.classify("。", score));  // no vocabulary word
  EXPECT_EQ(score, 0.0);

  ASSERT_TRUE(c.update(parse(config({a, b}))));
  EXPECT_EQ(c.getModelCount(), 2u);
  ASSERT_TRUE(c.classify("好", score));
  double fromA = 2.0 * (1.05 / 1.1 - 0.5);
  double posB = 4.0 / 5.0;
  double fromB = 2.0 * ((posB + 0.05) / (posB + 0.1) - 0.5);
  EXPECT_NEAR(score, (fromA + fromB) / 2.0, 1e-12);

  EXPECT_FALSE(c.update(parse(config({}))));
  EXPECT_FALSE(c.classify("好", score));
}

TEST_F(CentroidClassifierTest, NormAndSignSettings) {
  StdoutCapture quiet;
  // 不 has a negative weight in "pos"; without clipping it pulls 不好 down.
  std::string m = centroid("m", {0.0, 2.0, 0.0}, {2.0, 0.0, -2.0});
  auto scoreWith = [&](const std::string& extra, const std::string& text) {
    CentroidSentiClassifier c;
    double score = 9.0;
    EXPECT_TRUE(c.config(parse(config({m}, extra))) && c.classify(text, score)) << extra;
    return score;
  };
  const double kept = scoreWith("<is_ensure_nonnegative>FALSE</is_ensure_nonnegative>", "不好");
  const double lowerNo = scoreWith("<is_ensure_nonnegative>no</is_ensure_nonnegative>", "不好");
  const double clipped = scoreWith("", "不好");
  const double unnormalised = scoreWith("<norm_method>none</norm_method>", "好");
  // The document is (1, 0, 1)/sqrt(2). Kept, pos is (1, 0, -1)/sqrt(2) and
  // cancels out; clipped, it becomes (1, 0, 0) after the merge.
  EXPECT_EQ(kept, 0.0);
  double pos = 1.0 / std::sqrt(2.0);
  EXPECT_NEAR(clipped, 2.0 * ((pos + 0.05) / (pos + 0.1) - 0.5), 1e-12);
  EXPECT_EQ(lowerNo, clipped);
  // Without normalising, the row keeps its length 2.
  EXPECT_NEAR(unnormalised, 2.0 * (2.05 / 2.1 - 0.5), 1e-12);
}

TEST_F(CentroidClassifierTest, TextScoresAsItsTokens) {
  StdoutCapture quiet;
  // An n-gram analyzer's text is scored without tokens; that must not change
  // a score, counts, cuts at zero bytes and odd bytes included.
  std::string m = centroid("m", {0.0, 2.0, 1.0}, {2.0, 0.0, 0.5});
  std::string xml = config({m}, "<is_ensure_nonnegative>false</is_ensure_nonnegative>");
  xml.replace(xml.find(">1<"), 3, ">3<");
  xml.replace(xml.find(">bool<"), 6, ">tf-idf<");
  CentroidSentiClassifier c;
  ASSERT_TRUE(c.config(parse(xml)));
  AutoPtr<modular::TextAnalyzer> analyzer;
  ASSERT_TRUE(modular::TextAnalyzer::configTextAnalyzer((*m_root)["text_analyzer"], analyzer));
  const std::vector<std::string> texts = {"好好不差", std::string("好\0差差\0", 9), "\xff好\xe5\xa5",
                                          "\xf0\x9f\x98\x80不好", "x"};
  for (const std::string& text : texts) {
    std::vector<analyzer::Token> tokens;
    ASSERT_TRUE(analyzer->tokenizeText(text, tokens, true));
    double fromText = 9.0;
    double fromTokens = 8.0;
    EXPECT_TRUE(c.classify(text, fromText));
    EXPECT_TRUE(c.classify(tokens, fromTokens));
    EXPECT_EQ(fromText, fromTokens) << text;
  }
  double score = 0.0;
  EXPECT_TRUE(c.classify(texts[0], score) && score != 0.0);

  // The same scores from threads sharing the classifier (the n-gram path
  // looks at the analyzer on every text).
  std::vector<double> expected(texts.size());
  for (size_t i = 0; i < texts.size(); ++i) ASSERT_TRUE(c.classify(texts[i], expected[i]));
  EXPECT_EQ(0, mismatchesOnThreads(3, 400, expected, [&](size_t i, double& s) { return c.classify(texts[i], s); }));
}
