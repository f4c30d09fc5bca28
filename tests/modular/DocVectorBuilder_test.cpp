#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "SavedBytes.h"
#include "TestSupport.h"
#include "modular/StandardDocVectorBuilder.h"

using namespace vortm;
using namespace vortm::testing;
using analyzer::Token;
using modular::IDocVectorBuilder;
using modular::StandardDocVectorBuilder;
using utility::MySparseVector;

namespace {

class DocVectorBuilderTest : public ::testing::Test {
 protected:
  void SetUp() override {
    // 好 df 3, 差 df 1, 还行 df 7, in 100 documents
    writeFile(m_dir.file("v"),
              SavedBytes().u32(100).u32(3).word("5aW9", 3, 10).word("5beu", 1, 2).word("6L+Y6KGM", 7, 9).bytes());
  }

  configure::Parameter& parse(const std::string& xml) { return *(m_root = parseXml(xml)); }

  std::string builderXml(const std::string& weighting, const std::string& norm) {
    std::string xml = "<b><identifier>standard_doc_vec_builder</identifier><param><vocabulary_file>" +
                      m_dir.file("v") + "</vocabulary_file>";
    if (!weighting.empty()) xml += "<word_weighting_method>" + weighting + "</word_weighting_method>";
    if (!norm.empty()) xml += "<normalize_method>" + norm + "</normalize_method>";
    return xml + "</param></b>";
  }

  common::AutoPtr<IDocVectorBuilder> make(const std::string& weighting, const std::string& norm) {
    common::AutoPtr<IDocVectorBuilder> builder;
    StdoutCapture quiet;
    EXPECT_TRUE(IDocVectorBuilder::configDocVectorBuilder(parse(builderXml(weighting, norm))["b"], builder));
    return builder;
  }

  static std::vector<Token> tokens(const std::vector<std::string>& terms) {
    std::vector<Token> out;
    for (const std::string& t : terms) out.push_back(Token(t, 0, 0, Token::TT_CH_WORD));
    return out;
  }

  static double sum(MySparseVector<double, int>& v, bool squares) {
    double total = 0.0;
    for (int i = 0; i < v.size(); ++i) {
      double x = *v.getIdValuePairByIndex(i).second;
      total += squares ? x * x : x;
    }
    return total;
  }

  TempDir m_dir;
  common::AutoPtr<configure::Parameter> m_root;
};

}  // namespace

TEST_F(DocVectorBuilderTest, ConfigurationThroughTheRegistry) {
  StdoutCapture capture;
  common::AutoPtr<IDocVectorBuilder> builder;
  ASSERT_TRUE(IDocVectorBuilder::configDocVectorBuilder(parse(builderXml("", ""))["b"], builder));
  EXPECT_EQ(builder->getFeatureCount(), 3);
  EXPECT_FALSE(IDocVectorBuilder::configDocVectorBuilder(parse(builderXml("tfidf", ""))["b"], builder));
  EXPECT_FALSE(IDocVectorBuilder::configDocVectorBuilder(parse("<b><identifier>nope</identifier></b>")["b"], builder));
  EXPECT_FALSE(builder);
  EXPECT_FALSE(IDocVectorBuilder::configDocVectorBuilder(parse("<b><x>1</x></b>")["b"], builder));
  EXPECT_FALSE(IDocVectorBuilder::configDocVectorBuilder(
      parse("<b><identifier>standard_doc_vec_builder</identifier><param><vocabulary_file>" + m_dir.file("absent") +
            "</vocabulary_file></param></b>")["b"],
      builder));
  std::vector<std::string> lines = capture.lines();
  ASSERT_GE(lines.size(), 5u);
  EXPECT_EQ(lines[0], " docVecBuilderIdentifier standard_doc_vec_builder");
  EXPECT_EQ(lines[2], " docVecBuilderIdentifier nope");
  EXPECT_TRUE(isLogRecord(lines.back(), "Warn", "101", "Failed to Load Vocabulary from " + m_dir.file("absent")));

  // Unconfigured builders refuse, leaving the vector alone.
  StandardDocVectorBuilder fresh;
  MySparseVector<double, int> v;
  v[5] = 1.0;
  std::vector<Token> some = tokens({"好"});
  EXPECT_FALSE(fresh.buildDocVec(some, v));
  EXPECT_EQ(v.size(), 1);
}

TEST_F(DocVectorBuilderTest, WeightingAndNormalising) {
  MySparseVector<double, int> v;
  common::AutoPtr<IDocVectorBuilder> boolL2 = make("bool", "l2norm");
  std::vector<Token> three = tokens({"好", "好", "差", "还行", "不认识"});
  ASSERT_TRUE(boolL2->buildDocVec(three, v));
  ASSERT_EQ(v.size(), 3);
  for (int i = 0; i < 3; ++i) EXPECT_DOUBLE_EQ(*v.getIdValuePairByIndex(i).second, 1.0 / std::sqrt(3.0));

  common::AutoPtr<IDocVectorBuilder> tfidfL1 = make("tf-idf", "l1norm");
  ASSERT_TRUE(tfidfL1->buildDocVec(three, v));
  EXPECT_NEAR(sum(v, false), 1.0, 1e-12);

  // No normalisation: weights as the weighter made them; tf-idf is the
  // count times the stored float idf.
  common::AutoPtr<IDocVectorBuilder> raw = make("tf-idf", "none");
  ASSERT_TRUE(raw->buildDocVec(three, v));
  double idf = static_cast<float>(std::log10(100.1 / 4.1) / std::log10(2.0));
  EXPECT_DOUBLE_EQ(v[0], 2.0 * idf);

  // bo1 uses the corpus frequency: x = tf / docCount
  common::AutoPtr<IDocVectorBuilder> bo1 = make("bo1", "none");
  ASSERT_TRUE(bo1->buildDocVec(three, v));
  double x = 10.0 / 100.0;
  EXPECT_NEAR(v[0], std::log10((x + 1.0) / x) / std::log10(2.0) * 2.0 + std::log10(x + 1.0) / std::log10(2.0), 1e-12);

  // Empty input and documents of unknown words: true and an empty vector.
  std::vector<Token> none;
  std::vector<Token> unknown = tokens({"无", "关"});
  v[1] = 3.0;
  EXPECT_TRUE(boolL2->buildDocVec(none, v));
  EXPECT_EQ(v.size(), 0);
  EXPECT_TRUE(boolL2->buildDocVec(unknown, v));
  EXPECT_EQ(v.size(), 0);

  // A vector too small to normalise stays as it is.
  modular::Text text;
  text.m_terms.push_back(modular::TextTerm("好", 0, 0.001f));
  ASSERT_TRUE(boolL2->buildDocVec(text, v));
  EXPECT_DOUBLE_EQ(v[0], static_cast<double>(0.001f));
  text.m_terms[0].weight = 3.0f;
  text.m_terms.push_back(modular::TextTerm("差", 1, 4.0f));
  ASSERT_TRUE(boolL2->buildDocVec(text, v));
  EXPECT_DOUBLE_EQ(v[0], 0.6);
  EXPECT_DOUBLE_EQ(v[1], 0.8);
}
