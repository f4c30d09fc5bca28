// Whole paths from configuration file to score, through the exported C
// functions: the plain-C example host on a word-list configuration, and
// dictionaries built with insert and saveTo in both encodings.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TestSupport.h"
#include "WordDict.h"
#include "analyzer/Token.h"
#include "vorelin.h"

using namespace vortm;
using analyzer::Token;
using vortm::testing::TempDir;
using vortm::testing::toGbk;

namespace {

TEST(EndToEndTest, ExampleHostScoresWithABasicTokenizerChain) {
  // The host prints "%+.4f<TAB>text" for each text, then updates and exits.
  std::string cmd = std::string("cd ") + VORELIN_TEST_DATA_DIR + " && " + VORELIN_EXAMPLE_HOST +
                    " lexicon_basic.xml 'The staff were friendly' 'The room was dirty and the food bad'"
                    " 'The room was not clean' 'great, but the driver was late and rude' 2>&1";
  vortm::testing::CommandRun run = vortm::testing::runCommand(cmd);
  const std::string& out = run.out;
  ASSERT_EQ(0, run.code) << out;

  std::vector<std::string> scores;
  for (const std::string& line : vortm::testing::splitLines(out))
    if (!line.empty() && line[0] != '<') scores.push_back(line.substr(0, line.find('\t')));
  // One word: 1 * 0.25 damping; two agreeing words: 0.5; a negated word
  // becomes weak negative, alone -0.25; three words: (1 - 1 - 1) / 3 * 0.75
  // (word lists give English words no conjunction tag, so "but" weighs
  // nothing here).
  EXPECT_EQ((std::vector<std::string>{"+0.2500", "-0.5000", "-0.2500", "-0.2500"}), scores) << out;
  EXPECT_TRUE(vortm::testing::isLogRecord(out.substr(0, out.find('\n')), "Info", "001",
                                          "Sentiment Classifier Init Successfully"))
      << out;
}

std::string configFor(const std::string& encode, const std::string& dict) {
  return "<number_senti_classifiers><c><identifier>lexcion_senti_classifier</identifier>"
         "<number_weight type=\"numeric\">1</number_weight><param><text_analyzer><analyzer>"
         "<encode>" + encode + "</encode><tokenizers>"
         "<t><identifier>basicTokenzier</identifier><param><encode>" + encode + "</encode></param></t>"
         "<t><identifier>trieDictMaxForwardTokenzier</identifier><param><encode>" + encode +
         "</encode><dict_file>" + dict + "</dict_file><token_filters><f><identifier>skipNegationFilter"
         "</identifier><param><x/></param></f></token_filters></param></t>"
         "</tokenizers></analyzer></text_analyzer><lexcion_senti_scorer><identifier>std_lexcion_senti_scorer"
         "</identifier><param><position_weighter><x/></position_weighter></param></lexcion_senti_scorer>"
         "</param></c></number_senti_classifiers>";
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
    vortm::testing::saveWordDict(words, gbk, dict);
    std::string config = dir.file(gbk ? "gbk.xml" : "utf8.xml");
    vortm::testing::writeFile(config, configFor(gbk ? "gbk" : "utf-8", dict));
    void* handle = nullptr;
    vortm::testing::StdoutCapture quiet;
    ASSERT_EQ(1, Senti_Classifier_Init(config.c_str(), &handle));
    scores.emplace_back();
    for (const auto& t : texts) {
      double score = 0.0;
      ASSERT_EQ(1, Senti_Classify_Perform(handle, (gbk ? toGbk(t) : t).c_str(), &score));
      scores.back().push_back(score);
    }
    EXPECT_EQ(1, Senti_Classifier_Exit(handle));
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

}  // namespace
