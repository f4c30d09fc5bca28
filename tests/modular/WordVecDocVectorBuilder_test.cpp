#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "TestSupport.h"
#include "TokenBuilder.h"
#include "common/CreatorRegister.h"
#include "modular/Vocabulary.h"
#include "modular/WordVecDocVectorBuilders.h"

using namespace vortm;
using namespace vortm::testing;
using analyzer::Token;
using common::AutoPtr;
using modular::IDocVectorBuilder;
using utility::MySparseVector;

namespace {

std::string rel(int i) { return std::string("rel") + static_cast<char>('a' + i); }

std::string joined(const StdoutCapture& capture) {
  std::string all;
  for (const std::string& line : capture.lines()) all += line + "\n";
  return all;
}

class WordVecTest : public ::testing::Test {
 protected:
  void SetUp() override {
    // English words need three letters and a df above 24 to be saved.
    for (int i = 0; i < 20; ++i) m_vocabulary.addUserWord(rel(i), 30, 30);
    for (const char* w : {"aaa", "bbb", "ccc", "ddd"}) m_vocabulary.addUserWord(w, 30, 30);
    m_vocabulary.setDocCount(100);
    ASSERT_TRUE(m_vocabulary.writeTo(m_dir.file("v")));
  }

  // Builds through the registry; bool weights and no normalising keep every
  // word at weight 1.
  AutoPtr<IDocVectorBuilder> make(const std::string& identifier, const std::string& fileKey,
                                  const std::string& content, bool* ok = nullptr) {
    writeFile(m_dir.file("f"), content);
    m_root = parseXml("<b><identifier>" + identifier + "</identifier><param><vocabulary_file>" +
                        m_dir.file("v") + "</vocabulary_file><word_weighting_method>bool</word_weighting_method>" +
                        "<normalize_method>none</normalize_method><" + fileKey + ">" + m_dir.file("f") + "</" +
                        fileKey + "></param></b>");
    AutoPtr<IDocVectorBuilder> builder;
    bool configured = IDocVectorBuilder::configDocVectorBuilder((*m_root)["b"], builder);
    if (ok) *ok = configured;
    return builder;
  }

  double at(MySparseVector<double, int>& v, int id) {
    int index = v.getIndexById(id);
    return index < 0 ? -1.0 : *v.getIdValuePairByIndex(index).second;
  }
  double at(MySparseVector<double, int>& v, const std::string& word) { return at(v, m_vocabulary.getWordId(word)); }

  TempDir m_dir;
  modular::Vocabulary m_vocabulary;
  AutoPtr<configure::Parameter> m_root;
};

}  // namespace

TEST_F(WordVecTest, AveragesUnitEmbeddingsOfKnownWords) {
  StdoutCapture capture;
  // c is scaled to unit length; x is not in the vocabulary, b's short row is
  // skipped, and d's second row replaces its first.
  bool ok = false;
  AutoPtr<IDocVectorBuilder> builder =
      make("word_vec_doc_vec_builder", "word_vec_file", "5 2\naaa 1 0\nbbb 1\nccc 3 4\nxxx 1 1\nddd 9 9\nddd 0 2\n", &ok);
  ASSERT_TRUE(ok) << joined(capture);
  EXPECT_EQ(builder->getFeatureCount(), 2);
  EXPECT_NE(joined(capture).find(" word dim  2"), std::string::npos);

  MySparseVector<double, int> v;
  std::vector<Token> tokens = toks("aaa ccc zzz");
  ASSERT_TRUE(builder->buildDocVec(tokens, v));
  ASSERT_EQ(v.size(), 2);
  EXPECT_DOUBLE_EQ(at(v, 0), (1.0 + 0.6) / 2);
  EXPECT_DOUBLE_EQ(at(v, 1), 0.8 / 2);

  tokens = toks("ddd");
  ASSERT_TRUE(builder->buildDocVec(tokens, v));
  EXPECT_DOUBLE_EQ(at(v, 0), 0.0);
  EXPECT_DOUBLE_EQ(at(v, 1), 1.0);

  // Words without an embedding: true and an empty vector.
  tokens = toks("bbb relb");
  ASSERT_TRUE(builder->buildDocVec(tokens, v));
  EXPECT_EQ(v.size(), 0);

  // From a Text, the term weights are used as they are.
  modular::Text text;
  text.m_terms = {modular::TextTerm("aaa", 0, 3.0f), modular::TextTerm("ccc", 0, 1.0f)};
  ASSERT_TRUE(builder->buildDocVec(text, v));
  EXPECT_DOUBLE_EQ(at(v, 0), (3.0 + 0.6) / 4);
}

TEST_F(WordVecTest, BadVectorFilesFailConfig) {
  StdoutCapture capture;
  for (const char* content : {"", "3\n", "3 1\naaa 1\n", "3 x\n", "1 2 3\n", "3 999999999999\n"}) {
    bool ok = true;
    make("word_vec_doc_vec_builder", "word_vec_file", content, &ok);
    EXPECT_FALSE(ok) << content;
  }
  EXPECT_NE(joined(capture).find("Failed to Load Word Vec from " + m_dir.file("f")), std::string::npos);
  // Unreadable numbers and rows too short for the dimension are skipped.
  bool ok = false;
  AutoPtr<IDocVectorBuilder> builder =
      make("word_vec_doc_vec_builder", "word_vec_file", "2 3\naaa 1 nan 2\nbbb 1 2\nccc 0 0 1 7\n", &ok);
  ASSERT_TRUE(ok);
  MySparseVector<double, int> v;
  std::vector<Token> tokens = toks("aaa bbb ccc");
  ASSERT_TRUE(builder->buildDocVec(tokens, v));
  EXPECT_EQ(v.size(), 3);
  EXPECT_DOUBLE_EQ(at(v, 2), 1.0);
}

TEST_F(WordVecTest, ExpansionLendsADampedShareToRelatedWords) {
  StdoutCapture capture;
  std::string lib = "aaa bbb:0.5;ccc:0.00001;zzz:1;ddd\nbbb aaa:1\nunknown aaa:1\nccc\n";
  // rela lists 16 related words; only the first 15 are kept.
  lib += "rela ";
  for (int i = 1; i <= 16; ++i) lib += rel(i) + ":1" + (i < 16 ? ";" : "\n");
  bool ok = false;
  AutoPtr<IDocVectorBuilder> builder = make("word_expand_doc_vec_builder", "word_expand_file", lib, &ok);
  ASSERT_TRUE(ok);

  MySparseVector<double, int> v;
  std::vector<Token> tokens = toks("aaa");
  ASSERT_TRUE(builder->buildDocVec(tokens, v));
  // a = 1 and b = 0.2 * 0.5; c's weight of 1e-05 is dropped. Then l2.
  double norm = std::sqrt(1.0 + 0.01);
  EXPECT_EQ(v.size(), 2);
  EXPECT_DOUBLE_EQ(at(v, "aaa"), 1.0 / norm);
  EXPECT_DOUBLE_EQ(at(v, "bbb"), 0.1 / norm);

  // A related word present in the document gets its own weight and its share.
  tokens = toks("aaa bbb");
  ASSERT_TRUE(builder->buildDocVec(tokens, v));
  norm = std::sqrt(1.2 * 1.2 + 1.1 * 1.1);
  EXPECT_DOUBLE_EQ(at(v, "aaa"), 1.2 / norm);
  EXPECT_DOUBLE_EQ(at(v, "bbb"), 1.1 / norm);

  // A word without expansion adds only itself.
  tokens = toks("ccc");
  ASSERT_TRUE(builder->buildDocVec(tokens, v));
  EXPECT_EQ(v.size(), 1);
  EXPECT_DOUBLE_EQ(at(v, "ccc"), 1.0);

  tokens = toks("rela");
  ASSERT_TRUE(builder->buildDocVec(tokens, v));
  EXPECT_EQ(v.size(), 16);
  EXPECT_DOUBLE_EQ(at(v, rel(16)), -1.0);

  bool missing = true;
  make("word_expand_doc_vec_builder", "word_expand_file_typo", "", &missing);
  EXPECT_FALSE(missing);
  EXPECT_NE(joined(capture).find("Failed to Load Word Expand Lib  from "), std::string::npos);
}
