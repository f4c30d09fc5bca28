#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "TestSupport.h"
#include "TokenBuilder.h"
#include "modular/DCNNDocVectorBuilder.h"
#include "modular/StdConvDocVectorBuilder.h"

using namespace vortm::testing;
using vortm::modular::CNNDocVectorBuilder;
using vortm::modular::DCNNDocVectorBuilder;
using vortm::modular::StdConvDocVectorBuilder;
using Vec = vortm::utility::MySparseVector<double, int>;

namespace {

// Embeddings of the tiny networks: two dimensions.
const char kWords[] =
    "5 2\n"
    "a 1 0\n"
    "b 0 1\n"
    "x1 0.2 0\n"
    "x2 0.9 0\n"
    "x3 0.5 0\n";

class CnnBuilderTest : public ::testing::Test {
 protected:
  std::string file(const std::string& name, const std::string& content) {
    writeFile(m_dir.file(name), content);
    return m_dir.file(name);
  }
  // Configures `builder` with the words above (or `words`) and `model`.
  bool configure(CNNDocVectorBuilder& builder, const std::string& model, const std::string& norm = "none",
                 const std::string& words = kWords) {
    std::string xml = "<word_vec_file>" + file("w.vec", words) + "</word_vec_file><model_file>" +
                      file("m.txt", model) + "</model_file>";
    if (!norm.empty()) xml += "<normalize_method>" + norm + "</normalize_method>";
    StdoutCapture quiet;
    return builder.config(*parseXml(xml));
  }
  // The vector `builder` makes of hand-built tokens.
  static std::vector<double> build(CNNDocVectorBuilder& builder, const std::string& items) {
    std::vector<vortm::analyzer::Token> tokens = toks(items);
    Vec v;
    EXPECT_TRUE(builder.buildDocVec(tokens, v)) << items;
    return values(v);
  }
  static std::vector<double> values(Vec& v) {
    std::vector<double> out;
    for (int i = 0; i < v.size(); ++i) out.push_back(*v.getIdValuePairByIndex(i).second);
    return out;
  }
  static void expectNear(const std::vector<double>& expected, const std::vector<double>& got) {
    ASSERT_EQ(expected.size(), got.size());
    for (size_t i = 0; i < expected.size(); ++i) EXPECT_NEAR(expected[i], got[i], 1e-12) << "entry " << i;
  }
  TempDir m_dir;
};

// One layer of width 2, two filters, k = 1, three outputs: out0 = f0,
// out1 = f1, out2 = f0 - f1 + 0.5.
const char kStdModel[] =
    "1 2 3 1\n2\n"
    "1 0 0 1\n"
    "0 1 1 0\n"
    "0.1 -0.2\n"
    "1 0 1  0 1 -1\n"
    "0 0 0.5\n";

TEST_F(CnnBuilderTest, StdConvForwardPassByHand) {
  StdConvDocVectorBuilder b;
  ASSERT_TRUE(configure(b, kStdModel));
  EXPECT_EQ(2, b.getMinLength());
  auto expected = [](double f0, double f1) {
    f0 = std::tanh(f0);
    f1 = std::tanh(f1);
    return std::vector<double>{std::tanh(f0), std::tanh(f1), std::tanh(f0 - f1 + 0.5)};
  };
  // "a b": the single window holds (1, 0, 0, 1).
  expectNear(expected(2.1, -0.2), build(b, "a b"));
  // One known token is padded with a zero position at the end; the bias
  // still gives values.
  expectNear(expected(0.1, 0.8), build(b, "b"));
  // No known word: biases alone, and a full vector.
  expectNear(expected(0.1, -0.2), build(b, "zz yy"));
  // A negated word is its base word turned round; "NOT_" alone is unknown.
  expectNear(expected(0.1, -0.2), build(b, "NOT_a b"));
  expectNear(expected(-0.9, -0.2), build(b, "NOT_ NOT_b"));
  // Windows: "a b a" has two; the max over time keeps (a b) for f0 and (b a)
  // for f1.
  expectNear(expected(2.1, 1.8), build(b, "a b a"));
  // No tokens: an empty vector.
  EXPECT_TRUE(build(b, "").empty());

  // l2norm divides by the norm of the outputs.
  StdConvDocVectorBuilder n;
  ASSERT_TRUE(configure(n, kStdModel, ""));
  std::vector<double> e = expected(2.1, -0.2);
  double norm = std::sqrt(e[0] * e[0] + e[1] * e[1] + e[2] * e[2]);
  for (double& x : e) x /= norm;
  expectNear(e, build(n, "a b"));
}

TEST_F(CnnBuilderTest, KMaxPoolingKeepsGreatestFirst) {
  // Width 1, one filter reading dimension 0, k = 2; outputs 0 and 1 show the
  // pooled values in their order.
  const std::string model = "2 1 3 1\n1\n1 0\n0\n1 0 0  0 1 0\n0 0 0\n";
  StdConvDocVectorBuilder b;
  ASSERT_TRUE(configure(b, model));
  auto t2 = [](double x) { return std::tanh(std::tanh(x)); };
  expectNear({t2(0.9), t2(0.5), 0.0}, build(b, "x1 x3 x2"));
  // Equal values are both kept.
  expectNear({t2(0.9), t2(0.9), 0.0}, build(b, "x2 x1 x2"));
  // A value where the written-out tanh gives NaN never beats a number in
  // the pooling (k = 1 here), although its input is the largest.
  StdConvDocVectorBuilder huge;
  ASSERT_TRUE(configure(huge, "1 1 3 1\n1\n1 0\n0\n1 0 0\n0 0 0\n", "none", std::string(kWords) + "big 800 0\n"));
  expectNear({t2(0.5), 0.0, 0.0}, build(huge, "x3 big"));

  // The same rule per row in the dynamic builder, ties included; with fewer
  // columns than k the rest of the row is left alone.
  DCNNDocVectorBuilder d;
  ASSERT_TRUE(configure(d, "2 1 3 1\n1 1\n1 1\n0 0\n1 1\n0 0\n0 0 0 0 0 0\n0 0 0\n"));
  Eigen::MatrixXd in(2, 4), out = Eigen::MatrixXd::Constant(2, 3, 7.0);
  in << 0.5, 0.7, 0.1, 0.7,  //
      -0.3, -0.1, -0.2, -0.9;
  Eigen::MatrixXd want(2, 3);
  want << 0.7, 0.7, 0.5,  //
      -0.1, -0.2, -0.3;
  d.maxkPooling(in, out, 4, 3);
  EXPECT_TRUE(want == out) << out;
  out.setConstant(7.0);
  d.maxkPooling(in, out, 2, 3);
  EXPECT_TRUE(out.row(0) == Eigen::RowVector3d(0.7, 0.5, 7.0)) << out;
}

// First pooling k = 2, second k = 1, one branch of widths (2, 2), so the
// minimum length is 3; outputs 0 and 1 show the two pooled values.
const char kDcnnModel[] =
    "2 1 3 1\n2 2\n"
    "1 2  3 -1\n"
    "0 0.5\n"
    "1 -1  0.5 0.5\n"
    "0 0\n"
    "1 0 0  0 1 0\n"
    "0 0 0.25\n";

TEST_F(CnnBuilderTest, DcnnForwardPassByHand) {
  DCNNDocVectorBuilder b;
  ASSERT_TRUE(configure(b, kDcnnModel));
  EXPECT_EQ(3, b.getMinLength());
  // "a b" is padded to (-, a, b, -). Dimension 0 reads 0 1 0 0, dimension 1
  // reads 0 0 1 0; the first convolution gives (2, 1, 0) and (0.5, -0.5,
  // 3.5), pooled to (tanh 2, tanh 1) and (tanh 3.5, tanh 0.5).
  const double d0 = std::tanh(std::tanh(2.0) - std::tanh(1.0));
  const double d1 = std::tanh(0.5 * (std::tanh(3.5) + std::tanh(0.5)));
  expectNear({std::tanh(d0), std::tanh(d1), std::tanh(0.25)}, build(b, "a b"));
  // Leading unknown words are dropped, so this is the same document.
  expectNear({std::tanh(d0), std::tanh(d1), std::tanh(0.25)}, build(b, "u u a b"));
  // No known word: true and an empty vector; "NOT_a" is just unknown here.
  EXPECT_TRUE(build(b, "u NOT_a").empty());

  // Layout: row per dimension; unknown words after the first known one keep
  // their (empty) places.
  std::vector<double> out;
  auto tokens = toks("u a u u b");
  ASSERT_EQ(4, b.catenate(tokens, out));
  EXPECT_EQ((std::vector<double>{1, 0, 0, 0, 0, 0, 0, 1}), out);
  tokens = toks("u");
  EXPECT_EQ(0, b.catenate(tokens, out));

  // Minimum length 5 (k = 3, width 3): two words are padded on both sides
  // to six positions.
  DCNNDocVectorBuilder wide;
  ASSERT_TRUE(configure(wide, "3 1 3 1\n3 3\n0 0 0 0 0 0\n0 0\n0 0 0 0 0 0\n0 0\n0 0 0 0 0 0\n0 0 0\n"));
  EXPECT_EQ(5, wide.getMinLength());
  tokens = toks("a b");
  ASSERT_EQ(6, wide.catenate(tokens, out));
  EXPECT_EQ((std::vector<double>{0, 0, 1, 0, 0, 0, 0, 0, 0, 1, 0, 0}), out);
}

TEST_F(CnnBuilderTest, WordVectorFile) {
  StdConvDocVectorBuilder b;
  {
    StdoutCapture capture;
    EXPECT_FALSE(b.loadWordVec(file("one.vec", "2\na 1 2\n")));
    EXPECT_FALSE(b.loadWordVec(file("three.vec", "1 2 3\na 1 2\n")));
    EXPECT_FALSE(b.loadWordVec(file("dim1.vec", "1 1\na 1\n")));
    EXPECT_FALSE(b.loadWordVec(file("dimx.vec", "1 x\na 1\n")));
    EXPECT_FALSE(b.loadWordVec(m_dir.file("missing.vec")));
    EXPECT_FALSE(b.loadWordVec(file("short.vec", "2 3\na 1 2 3\nb 1 2\n")));
    ASSERT_TRUE(b.loadWordVec(file("ok.vec", "9 2\r\na 1 2\r\nb 3 4\n\na 5 6\n")));
    EXPECT_EQ(" word dim  3\n word dim  2\n", capture.str());
  }
  EXPECT_EQ(2, b.getWordDim());
  EXPECT_EQ(3u, b.getWordCount());
  EXPECT_EQ(2, b.findWord("a"));  // the later row wins
  EXPECT_EQ(1, b.findWord("b"));
  EXPECT_EQ(-1, b.findWord("c"));

  // A repeated word behaves as its later row in the network.
  StdConvDocVectorBuilder later, direct;
  ASSERT_TRUE(configure(later, kStdModel, "none", "3 2\nb 9 9\na 0 1\nb 1 0\n"));
  ASSERT_TRUE(configure(direct, kStdModel, "none", "1 2\nb 1 0\n"));
  expectNear(build(direct, "b b"), build(later, "b b"));
}

TEST_F(CnnBuilderTest, ModelFileChecksAndMessages) {
  const std::string body = "1 0 0 1\n0 1 1 0\n0.1 -0.2\n1 0 1 0 1 -1\n0 0 0.5\n";
  const std::pair<std::string, bool> stdCases[] = {
      {"1 2 3 1\n2\n" + body, true},            // the reference
      {"1 2 3 1\n2\n" + body + " 7 x\n", true},  // what follows the last value is ignored
      {"1 2 2 1\n2\n" + body, false},           // featureCount 2
      {"0 2 3 1\n2\n" + body, false},           // poolSize 0
      {"1 2 3 0\n2\n" + body, false},           // no layer
      {"1 2 3 1\n0\n" + body, false},           // width 0
      {"1 -2 3 1\n2\n" + body, false},          // a negative filter count sizes nothing
      {"1 2 3 1\nx\n" + body, false},           // a width that is no number
      {"1 999999999 3 1\n2\n" + body, false},   // forged size: refused before allocating
  };
  for (const auto& c : stdCases) {
    StdConvDocVectorBuilder b;
    EXPECT_EQ(c.second, configure(b, c.first)) << c.first;
  }
  // filterCount 0 is accepted: the network rests on its output bias.
  StdConvDocVectorBuilder zero;
  ASSERT_TRUE(configure(zero, "1 0 3 1\n2\n0.5 0.25 0\n"));
  expectNear({std::tanh(0.5), std::tanh(0.25), 0.0}, build(zero, "a"));
  // A file cut behind any of its numbers but the last fails.
  auto expectCutsFail = [&](const std::string& full, bool dynamic) {
    const size_t last = full.find_last_of(' ');
    for (size_t cut = 0; cut < last; ++cut) {
      if (full[cut] != ' ' && full[cut] != '\n') continue;
      StdConvDocVectorBuilder s;
      DCNNDocVectorBuilder d;
      CNNDocVectorBuilder& b = dynamic ? static_cast<CNNDocVectorBuilder&>(d) : s;
      EXPECT_FALSE(configure(b, full.substr(0, cut))) << full.substr(0, cut);
    }
  };
  expectCutsFail(stdCases[0].first, false);
  expectCutsFail(kDcnnModel, true);
  DCNNDocVectorBuilder dbad;
  EXPECT_FALSE(configure(dbad, "2 0 3 1\n2 2\n"));  // second k of 0

  // The records name the file; the model is not read without word vectors.
  StdConvDocVectorBuilder b;
  StdoutCapture capture;
  auto p = parseXml("<word_vec_file>" + m_dir.file("nope.vec") + "</word_vec_file>");
  EXPECT_FALSE(b.config(*p));
  p = parseXml("<word_vec_file>" + file("ok.vec", kWords) + "</word_vec_file><model_file>" +
                 m_dir.file("nope.txt") + "</model_file>");
  EXPECT_FALSE(b.config(*p));
  p = parseXml("<word_vec_file>" + file("ok.vec", kWords) + "</word_vec_file>");
  EXPECT_FALSE(b.config(*p));
  auto lines = capture.lines();
  ASSERT_EQ(5u, lines.size());
  EXPECT_TRUE(isLogRecord(lines[0], "Warn", "101", "Failed to Load Word Vec from " + m_dir.file("nope.vec")));
  EXPECT_EQ(" word dim  2", lines[1]);
  EXPECT_TRUE(isLogRecord(lines[2], "Warn", "101", "Failed to Load Model from " + m_dir.file("nope.txt")));
  EXPECT_TRUE(isLogRecord(lines[4], "Warn", "101", "Failed to Load Model from "));
  // An unconfigured builder builds nothing.
  std::vector<vortm::analyzer::Token> tokens = toks("a");
  Vec v;
  EXPECT_FALSE(b.buildDocVec(tokens, v));
}

TEST_F(CnnBuilderTest, ActivateAndNorm) {
  EXPECT_NEAR(std::tanh(0.3), CNNDocVectorBuilder::activate(0.3), 1e-15);
  EXPECT_EQ(0.0, CNNDocVectorBuilder::activate(0.0));
  // Written out with exponentials: overflow gives NaN, not 1.
  EXPECT_TRUE(std::isnan(CNNDocVectorBuilder::activate(1000.0)));
  // An all-zero output (weights and biases 0) is left as it is by l2norm.
  StdConvDocVectorBuilder b;
  ASSERT_TRUE(configure(b, "1 1 3 1\n1\n0 0\n0\n0 0 0\n0 0 0\n", "l2norm"));
  expectNear({0.0, 0.0, 0.0}, build(b, "a"));
}

}  // namespace
