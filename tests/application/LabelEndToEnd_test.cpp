// The label scorer from configuration file to score through the exported C
// functions, on a small dictionary with attribute words and a label lexicon,
// in both encodings.
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "TestSupport.h"
#include "WordDict.h"
#include "analyzer/Token.h"
#include "modular/SentiLabelSentiScorer.h"
#include "utility/BufferedFileWriter.h"
#include "vorelin.h"

using namespace vortm;
using analyzer::Token;
using vortm::testing::TempDir;
using vortm::testing::toGbk;

namespace {

std::string labelConfig(const std::string& encode, const std::string& dict, const std::string& lexicon) {
  return "<number_senti_classifiers><c><identifier>lexcion_senti_classifier</identifier>"
         "<number_weight type=\"numeric\">1</number_weight><param><text_analyzer><analyzer>"
         "<encode>" + encode + "</encode><tokenizers>"
         "<t><identifier>basicTokenzier</identifier><param><encode>" + encode + "</encode></param></t>"
         "<t><identifier>trieDictMaxForwardTokenzier</identifier><param><encode>" + encode +
         "</encode><dict_file>" + dict + "</dict_file></param></t>"
         "</tokenizers></analyzer></text_analyzer><lexcion_senti_scorer><identifier>senti_label_senti_scorer"
         "</identifier><param><position_weighter><x/></position_weighter><senti_label_extractor><identifier>"
         "simple_senti_label_extractor</identifier><param><x/></param></senti_label_extractor>"
         "<senti_label_lexcion_file>" + lexicon + "</senti_label_lexcion_file></param></lexcion_senti_scorer>"
         "</param></c></number_senti_classifiers>";
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
    vortm::testing::saveWordDict(words, gbk, dict);
    std::string lexiconFile = dir.file(gbk ? "gbk.lex" : "utf8.lex");
    modular::SentiLabelSentiScorer::SentiLabelLexcion lex;
    for (const auto& e : lexicon) lex.entries()[enc(e.first)] = e.second;
    {
      utility::BufferedFileWriter writer(lexiconFile, true);
      ASSERT_TRUE(lex.writeSelf(writer) && writer.close());
    }
    std::string config = dir.file(gbk ? "gbk.xml" : "utf8.xml");
    vortm::testing::writeFile(config, labelConfig(gbk ? "gbk" : "utf-8", dict, lexiconFile));
    void* handle = nullptr;
    vortm::testing::StdoutCapture quiet;
    ASSERT_EQ(1, Senti_Classifier_Init(config.c_str(), &handle)) << quiet.str();
    scores.emplace_back();
    for (const auto& t : texts) {
      double score = 0.0;
      ASSERT_EQ(1, Senti_Classify_Perform(handle, enc(t).c_str(), &score));
      scores.back().push_back(score);
    }
    // Threads sharing the handle each walk a clone of the extractor, and
    // get the same scores as one thread alone.
    std::vector<std::vector<double> > threaded(2);
    std::vector<std::thread> workers;
    for (auto& out : threaded)
      workers.emplace_back([&out, &texts, &enc, handle] {
        for (int round = 0; round < 200; ++round)
          for (const auto& t : texts) {
            double score = 0.0;
            Senti_Classify_Perform(handle, enc(t).c_str(), &score);
            if (round == 0) out.push_back(score);
            else if (score != out[&t - &texts[0]]) out.push_back(99.0);
          }
      });
    for (auto& w : workers) w.join();
    for (const auto& out : threaded) EXPECT_EQ(scores.back(), out);
    EXPECT_EQ(1, Senti_Classifier_Exit(handle));

    // A missing lexicon fails the whole initialisation.
    vortm::testing::writeFile(config, labelConfig(gbk ? "gbk" : "utf-8", dict, dir.file("missing.lex")));
    handle = nullptr;
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
