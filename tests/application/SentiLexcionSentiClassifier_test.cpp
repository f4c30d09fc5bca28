#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "TestSupport.h"
#include "application/SentiClassifierFactory.h"
#include "application/SentiLexcionSentiClassifier.h"
#include "configure/BasicParamParser.h"
#include "vorelin.h"

using namespace vortm;
using namespace vortm::testing;
using application::ISentiClassifier;
using application::SentiLexcionSentiClassifier;
using common::AutoPtr;
using configure::Parameter;

namespace {

AutoPtr<Parameter> parse(const std::string& text) {
  configure::BasicParamParser parser;
  AutoPtr<Parameter> root;
  EXPECT_TRUE(parser.doParseFromText(text, root)) << text;
  return root;
}

// A UTF-8 analyzer of one rule-based tokenizer; `filters` goes into its
// filter list.
std::string analyzerBlock(const std::string& filters) {
  return "<text_analyzer><analyzer><tokenizers><item><identifier>basicTokenzier</identifier>"
         "<param><encode>utf-8</encode><token_filters>" +
         filters + "</token_filters></param></item></tokenizers></analyzer></text_analyzer>";
}

// Tags the English words of the two lists as positive (6) and negative (7).
std::string englishFilter(const std::string& posFile, const std::string& negFile) {
  return "<item><identifier>defaultEnFilter</identifier><param><en_pos_senti_file>" + posFile +
         "</en_pos_senti_file><en_neg_senti_file>" + negFile + "</en_neg_senti_file></param></item>";
}

std::string scorerBlock(const std::string& identifier) {
  return "<lexcion_senti_scorer><identifier>" + identifier +
         "</identifier><param><position_weighter><but_conj_boost type=\"float\">2.0</but_conj_boost>"
         "</position_weighter></param></lexcion_senti_scorer>";
}

class LexcionClassifierTest : public ::testing::Test {
 protected:
  void SetUp() override {
    writeFile(m_dir.file("pos"), "good\ngreat\n");
    writeFile(m_dir.file("neg"), "bad\nawful\n");
  }
  std::string taggedConfig(bool swapped = false) {
    return analyzerBlock(swapped ? englishFilter(m_dir.file("neg"), m_dir.file("pos"))
                                 : englishFilter(m_dir.file("pos"), m_dir.file("neg"))) +
           scorerBlock("std_lexcion_senti_scorer");
  }
  TempDir m_dir;
};

}  // namespace

TEST_F(LexcionClassifierTest, LifecycleAndFailures) {
  double score = 5.0;
  SentiLexcionSentiClassifier c;
  // Before config: false, score reset.
  EXPECT_FALSE(c.classify("good", score));
  EXPECT_EQ(0.0, score);

  // No scorer block: config succeeds, classify fails, except on an empty
  // text, which is not tokenized at all.
  ASSERT_TRUE(c.config(*parse(analyzerBlock(""))));
  score = 5.0;
  EXPECT_FALSE(c.classify("good", score));
  EXPECT_EQ(0.0, score);
  score = 5.0;
  EXPECT_TRUE(c.classify("", score));
  EXPECT_EQ(0.0, score);

  // A missing analyzer or an unknown scorer fails config with one record.
  {
    StdoutCapture capture;
    SentiLexcionSentiClassifier noAnalyzer;
    EXPECT_FALSE(noAnalyzer.config(*parse(scorerBlock("std_lexcion_senti_scorer"))));
    SentiLexcionSentiClassifier badScorer;
    EXPECT_FALSE(badScorer.config(*parse(analyzerBlock("") + scorerBlock("no_such_scorer"))));
    const std::vector<std::string> lines = capture.lines();
    ASSERT_EQ(2u, lines.size());
    EXPECT_TRUE(isLogRecord(lines[0], "Warn", "101", "Failed to Init Text Analyzer")) << lines[0];
    EXPECT_TRUE(isLogRecord(lines[1], "Warn", "101", "Failed to Config for Lexcion Senti Scorer")) << lines[1];
  }
}

TEST_F(LexcionClassifierTest, ScoresThroughTheAnalyzer) {
  // Untagged English words carry no polarity.
  AutoPtr<ISentiClassifier> plain = application::SentiClassifierFactory::getSentiClassifier(
      "lexcion_senti_classifier", *parse(analyzerBlock("") + scorerBlock("std_lexcion_senti_scorer")));
  ASSERT_TRUE(plain.get() != nullptr);
  double score = 5.0;
  ASSERT_TRUE(plain->classify("a good and great film", score));
  EXPECT_EQ(0.0, score);

  // With the word lists the same road gives signed, damped scores.
  AutoPtr<ISentiClassifier> tagged =
      application::SentiClassifierFactory::getSentiClassifier("lexcion_senti_classifier", *parse(taggedConfig()));
  ASSERT_TRUE(tagged.get() != nullptr);
  ASSERT_TRUE(tagged->classify("a good film", score));
  EXPECT_DOUBLE_EQ(0.25, score);
  ASSERT_TRUE(tagged->classify("awful, simply bad", score));
  EXPECT_DOUBLE_EQ(-0.5, score);
  ASSERT_TRUE(tagged->classify("good and great, yet bad", score));
  EXPECT_DOUBLE_EQ(0.25, score);

  // update rebuilds both parts: swapped lists flip the sign.
  ASSERT_TRUE(tagged->update(*parse(taggedConfig(true))));
  ASSERT_TRUE(tagged->classify("a good film", score));
  EXPECT_DOUBLE_EQ(-0.25, score);

  // A failed update logs and leaves the classifier unusable.
  {
    StdoutCapture capture;
    EXPECT_FALSE(tagged->update(*parse(analyzerBlock("") + scorerBlock("no_such_scorer"))));
    const std::vector<std::string> lines = capture.lines();
    ASSERT_EQ(1u, lines.size());
    EXPECT_TRUE(isLogRecord(lines[0], "Warn", "101", "Failed to Config for Lexcion Senti Scorer")) << lines[0];
  }
  EXPECT_FALSE(tagged->classify("a good film", score));
}

TEST_F(LexcionClassifierTest, ThroughTheExportedFunctions) {
  const std::string file = m_dir.file("classifier.xml");
  writeFile(file, "<number_senti_classifiers><item><identifier>lexcion_senti_classifier</identifier><param>" +
                      taggedConfig() +
                      "</param><number_weight type=\"numeric\">2.0</number_weight></item></number_senti_classifiers>");
  void* handle = nullptr;
  StdoutCapture capture;
  ASSERT_EQ(1, Senti_Classifier_Init(file.c_str(), &handle));
  double score = 0.0;
  EXPECT_EQ(1, Senti_Classify_Perform(handle, "bad weather", &score));
  EXPECT_DOUBLE_EQ(-0.5, score);
  EXPECT_EQ(1, Senti_Classifier_Exit(handle));
}

TEST_F(LexcionClassifierTest, ThreadsAgreeWithOneThread) {
  SentiLexcionSentiClassifier c;
  ASSERT_TRUE(c.config(*parse(taggedConfig())));
  const char* words[] = {"good", "bad", "great", "awful", "film", "plot"};
  std::vector<std::string> texts;
  for (int i = 0; i < 60; ++i) {
    std::string text;
    for (int k = 0; k <= i % 7; ++k) text += std::string(words[(i * 5 + k * 3) % 6]) + (k % 2 ? ", " : " ");
    texts.push_back(text);
  }
  std::vector<double> expected(texts.size());
  for (size_t i = 0; i < texts.size(); ++i) ASSERT_TRUE(c.classify(texts[i], expected[i]));

  const int kThreads = 4;
  std::vector<std::vector<double> > results(kThreads, std::vector<double>(texts.size() * 20));
  std::vector<int> failures(kThreads, 0);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t]() {
      for (size_t n = 0; n < results[t].size(); ++n) {
        if (!c.classify(texts[(n + t * 7) % texts.size()], results[t][n])) ++failures[t];
      }
    });
  }
  for (std::thread& th : threads) th.join();
  for (int t = 0; t < kThreads; ++t) {
    EXPECT_EQ(0, failures[t]);
    for (size_t n = 0; n < results[t].size(); ++n) {
      ASSERT_EQ(expected[(n + t * 7) % texts.size()], results[t][n]) << "thread " << t << " call " << n;
    }
  }
}
