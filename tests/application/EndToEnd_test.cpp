// Whole paths from configuration file to score, through the exported C
// functions: dictionaries built with insert and saveTo in both encodings,
// for the standard and the label scorer.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TestSupport.h"
#include "analyzer/Token.h"
#include "analyzer/TrieDict.h"
#include "modular/SentiLabelSentiScorer.h"
#include "utility/BufferedFileWriter.h"
#include "vorelin.h"

using namespace vortm;
using namespace vortm::testing;
using analyzer::Token;

namespace {

// Saves Chinese words with their tags as a dictionary in UTF-8 or GBK.
void saveWordDict(const std::vector<std::pair<std::string, int> >& words, bool gbk, const std::string& path) {
  if (gbk) {
    analyzer::TrieDict<unsigned short> trie("basicGBKLexer");
    for (const auto& w : words) ASSERT_TRUE(trie.insert(toGbk(w.first), (Token::TT_CH_WORD << 8) | w.second));
    ASSERT_TRUE(trie.saveTo(path));
  } else {
    analyzer::TrieDict<unsigned int> trie("basicUTF8Lexer");
    for (const auto& w : words) ASSERT_TRUE(trie.insert(w.first, (Token::TT_CH_WORD << 8) | w.second));
    ASSERT_TRUE(trie.saveTo(path));
  }
}

TEST(EndToEndTest, DictionaryChainScoresAlikeInUtf8AndGbk) {
  const std::vector<std::pair<std::string, int> > words = {
      {"好", Token::TG_POSITIVE}, {"满意", Token::TG_POSITIVE}, {"差", Token::TG_NEGATIVE},
      {"很", Token::TG_DEGREE_11}, {"不", Token::TG_NEGATION},  {"但是", Token::TG_BUT_CONJ},
      {"服务", Token::TG_PLAIN},  {"房间", Token::TG_PLAIN}};
  const std::vector<std::string> texts = {"服务好", "服务很差", "服务不好", "房间好，服务差", "房间好，服务很差",
                                          "房间好，但是服务差"};
  TempDir dir;
  std::vector<std::vector<double> > scores;
  for (bool gbk : {false, true}) {
    std::string dict = dir.file(gbk ? "gbk.dict" : "utf8.dict");
    saveWordDict(words, gbk, dict);
    std::string config = dir.file(gbk ? "gbk.xml" : "utf8.xml");
    writeFile(config, lexiconConfig(gbk ? "gbk" : "utf-8", dict,
                                                "<token_filters><f><identifier>skipNegationFilter</identifier>"
                                                "<param><x/></param></f></token_filters>",
                                                "<identifier>std_lexcion_senti_scorer</identifier><param>"
                                                "<position_weighter><x/></position_weighter></param>"));
    scores.push_back(scoreThroughApi(config, gbk ? toGbk(texts) : texts));
    ASSERT_EQ(texts.size(), scores.back().size());
  }
  const std::vector<double>& s = scores[0];
  EXPECT_DOUBLE_EQ(0.25, s[0]);   // one positive word, damped
  EXPECT_DOUBLE_EQ(-0.25, s[1]);  // the degree word does not change a lone word's ratio
  EXPECT_DOUBLE_EQ(-0.25, s[2]);  // negated: a weak negative
  EXPECT_DOUBLE_EQ(0.0, s[3]);    // one each way
  EXPECT_LT(s[4], 0.0);           // the intensified negative outweighs
  EXPECT_DOUBLE_EQ((1.0 - 2.0) / 3.0 * 0.5, s[5]);  // the but-clause weighs double
  EXPECT_EQ(scores[0], scores[1]);
}

std::string labelConfig(const std::string& encode, const std::string& dict, const std::string& lexicon) {
  return lexiconConfig(encode, dict, "", labelScorerBlock(lexicon));
}

TEST(LabelEndToEndTest, LabelScorerScoresAlikeInUtf8AndGbk) {
  const std::vector<std::pair<std::string, int> > words = {
      {"价格", Token::TG_ATTRIBUTE_22}, {"服务", Token::TG_ATTRIBUTE_22}, {"房间", Token::TG_ATTRIBUTE_21},
      {"贵", Token::TG_SENTI_20},       {"干净", Token::TG_SENTI_20},     {"差", Token::TG_NEGATIVE},
      {"很", Token::TG_DEGREE_11},      {"不", Token::TG_NEGATION}};
  const std::map<std::string, double> lexicon = {{"价格贵", -0.8}, {"干净", 0.9}, {"服务", 0.0}};
  const std::vector<std::string> texts = {"价格贵", "价格不贵", "房间很干净", "服务差", "今天"};
  TempDir dir;
  std::vector<std::vector<double> > scores;
  for (bool gbk : {false, true}) {
    auto enc = [gbk](const std::string& s) { return gbk ? toGbk(s) : s; };
    std::string dict = dir.file(gbk ? "gbk.dict" : "utf8.dict");
    saveWordDict(words, gbk, dict);
    std::string lexiconFile = dir.file(gbk ? "gbk.lex" : "utf8.lex");
    modular::SentiLabelSentiScorer::SentiLabelLexcion lex;
    for (const auto& e : lexicon) lex.entries()[enc(e.first)] = e.second;
    {
      utility::BufferedFileWriter writer(lexiconFile, true);
      ASSERT_TRUE(lex.writeSelf(writer) && writer.close());
    }
    std::string config = dir.file(gbk ? "gbk.xml" : "utf8.xml");
    writeFile(config, labelConfig(gbk ? "gbk" : "utf-8", dict, lexiconFile));
    // Threads sharing the handle each walk a clone of the extractor, and
    // get the same scores as one thread alone.
    scores.push_back(scoreThroughApi(config, gbk ? toGbk(texts) : texts, 2, 200));
    ASSERT_EQ(texts.size(), scores.back().size());

    // A missing lexicon fails the whole initialisation.
    writeFile(config, labelConfig(gbk ? "gbk" : "utf-8", dict, dir.file("missing.lex")));
    void* handle = nullptr;
    StdoutCapture quiet;
    EXPECT_EQ(0, Senti_Classifier_Init(config.c_str(), &handle));
    EXPECT_TRUE(handle == nullptr);
  }
  const std::vector<double>& s = scores[0];
  // The pair's value, two words counted.
  EXPECT_DOUBLE_EQ(-0.8 / (0.1 + 3.0 + 0.8), s[0]);
  // Only the plain pair is known: -0.8 turned by the negation (x -0.5).
  EXPECT_DOUBLE_EQ(0.4 / (0.15 + 3.0 + 0.4), s[1]);
  // No pair: the word's value with its degree word (0.9 x 1.2).
  EXPECT_DOUBLE_EQ(1.08 / (0.15 + 3.0 + 1.08), s[2]);
  // A general word right after an attribute stands alone: the attribute
  // (value 0) and the word (-1) make two labels.
  EXPECT_DOUBLE_EQ(-1.0 / (0.1 + 3.0 + 1.0), s[3]);
  EXPECT_DOUBLE_EQ(0.0, s[4]);
  EXPECT_EQ(scores[0], scores[1]);
}

}  // namespace
