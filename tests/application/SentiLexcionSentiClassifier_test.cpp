#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FixedScoreClassifier.h"
#include "TestSupport.h"
#include "application/SentiClassifierFactory.h"
#include "application/SentiLexcionSentiClassifier.h"

using namespace vortm;
using namespace vortm::testing;
using application::SentiLexcionSentiClassifier;

namespace {

// A UTF-8 analyzer of one rule-based tokenizer with the given filters.
std::string analyzerBlock(const std::string& filters) {
  return "<text_analyzer><analyzer><tokenizers><item><identifier>basicTokenzier</identifier><param><encode>utf-8"
         "</encode><token_filters>" +
         filters + "</token_filters></param></item></tokenizers></analyzer></text_analyzer>";
}

std::string scorerBlock(const std::string& identifier) {
  return "<lexcion_senti_scorer><identifier>" + identifier + "</identifier><param><position_weighter>"
         "<but_conj_boost type=\"float\">2.0</but_conj_boost></position_weighter></param></lexcion_senti_scorer>";
}

class LexcionClassifierTest : public ::testing::Test {
 protected:
  void SetUp() override {
    writeFile(m_dir.file("pos"), "good\ngreat\n");
    writeFile(m_dir.file("neg"), "bad\nawful\n");
  }
  // The English filter tags the listed words positive and negative; swapped,
  // the other way round.
  std::string taggedConfig(bool swapped = false) {
    return analyzerBlock("<item><identifier>defaultEnFilter</identifier><param><en_pos_senti_file>" +
                         m_dir.file(swapped ? "neg" : "pos") + "</en_pos_senti_file><en_neg_senti_file>" +
                         m_dir.file(swapped ? "pos" : "neg") + "</en_neg_senti_file></param></item>") +
           scorerBlock("std_lexcion_senti_scorer");
  }
  TempDir m_dir;
};

}  // namespace

TEST_F(LexcionClassifierTest, ConfigFailures) {
  // No scorer block: config succeeds, classify fails with the score reset,
  // except on an empty text, which is not tokenized at all.
  SentiLexcionSentiClassifier c;
  ASSERT_TRUE(c.config(*parseXml(analyzerBlock(""))));
  double score = 5.0;
  EXPECT_FALSE(c.classify("good", score));
  EXPECT_EQ(0.0, score);
  score = 5.0;
  EXPECT_TRUE(c.classify("", score));
  EXPECT_EQ(0.0, score);

  // A missing analyzer or an unknown scorer fails config with one record.
  StdoutCapture capture;
  EXPECT_FALSE(SentiLexcionSentiClassifier().config(*parseXml(scorerBlock("std_lexcion_senti_scorer"))));
  EXPECT_FALSE(SentiLexcionSentiClassifier().config(*parseXml(analyzerBlock("") + scorerBlock("no_such_scorer"))));
  ASSERT_EQ(2u, capture.lines().size());
  EXPECT_TRUE(isLogRecord(capture.lines()[0], "Warn", "101", "Failed to Init Text Analyzer"));
  EXPECT_TRUE(isLogRecord(capture.lines()[1], "Warn", "101", "Failed to Config for Lexcion Senti Scorer"));
}

TEST_F(LexcionClassifierTest, ScoresThroughTheAnalyzerAndUpdate) {
  auto tagged =
      application::SentiClassifierFactory::getSentiClassifier("lexcion_senti_classifier", *parseXml(taggedConfig()));
  ASSERT_TRUE(tagged.get() != nullptr);
  // Signed, damped scores; an update rebuilds both parts, so swapped lists flip the sign.
  double score = 5.0;
  ASSERT_TRUE(tagged->classify("a good film", score));
  EXPECT_DOUBLE_EQ(0.25, score);
  ASSERT_TRUE(tagged->classify("awful, simply bad", score));
  EXPECT_DOUBLE_EQ(-0.5, score);
  ASSERT_TRUE(tagged->update(*parseXml(taggedConfig(true))));
  ASSERT_TRUE(tagged->classify("a good film", score));
  EXPECT_DOUBLE_EQ(-0.25, score);

  // A failed update logs and leaves the classifier unusable.
  StdoutCapture capture;
  EXPECT_FALSE(tagged->update(*parseXml(analyzerBlock("") + scorerBlock("no_such_scorer"))));
  EXPECT_FALSE(tagged->classify("a good film", score));
  ASSERT_EQ(1u, capture.lines().size());
  EXPECT_TRUE(isLogRecord(capture.lines()[0], "Warn", "101", "Failed to Config for Lexcion Senti Scorer"));
}

TEST_F(LexcionClassifierTest, ThreadsOnOneHandleAgreeWithOneThread) {
  const std::string file = m_dir.file("classifier.xml");
  writeFile(file, list(member("lexcion_senti_classifier", numericWeight(2.0), taggedConfig())));
  // Scores taken on one thread, then asked for again by four at once.
  const std::vector<std::string> texts = {"good film", "bad, awful plot", "great plot, yet bad", "awful",
                                          "good, great, bad, awful film", "film. plot good? bad great"};
  EXPECT_EQ(texts.size(), scoreThroughApi(file, texts, 4, 170).size());
}
