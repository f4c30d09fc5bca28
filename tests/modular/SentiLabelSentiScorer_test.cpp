#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "SavedBytes.h"
#include "TestSupport.h"
#include "TokenBuilder.h"
#include "modular/SentiLabelSentiScorer.h"
#include "utility/BufferedFileReader.h"
#include "utility/BufferedFileWriter.h"

using namespace vortm;
using namespace vortm::testing;
using analyzer::Token;
using modular::SentiLabel;
using modular::SentiLabelSentiScorer;

namespace {

bool saveLexicon(const std::string& path, const std::map<std::string, double>& entries) {
  SentiLabelSentiScorer::SentiLabelLexcion lexicon;
  lexicon.entries() = entries;
  utility::BufferedFileWriter writer(path, true);
  return lexicon.writeSelf(writer) && writer.close();
}

// A scorer over a small lexicon; "after-only" words never act as modifiers
// before a word, "before-only" ones never after it.
class LabelScorerTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(saveLexicon(m_dir.file("lex.bin"), {{"price", -0.6},
                                                    {"pricehigh", -0.5},
                                                    {"roomclean", 1.0},
                                                    {"roomdirty", -1.0},
                                                    {"notroombig", 0.3},
                                                    {"high", 0.8},
                                                    {"clean", 0.7},
                                                    {"dirty", 0.8},
                                                    {"small", -0.4}}));
    writeFile(m_dir.file("after_only.txt"), "indeed\n");
    writeFile(m_dir.file("before_only.txt"), "so\n");
    ASSERT_TRUE(m_scorer.config(*parseXml(config(m_dir.file("lex.bin")))));
  }

  std::string config(const std::string& lexicon) {
    return "<position_weighter><x/></position_weighter><senti_label_extractor><identifier>"
           "simple_senti_label_extractor</identifier><param><x/></param></senti_label_extractor>"
           "<senti_label_lexcion_file>" + lexicon + "</senti_label_lexcion_file>"
           "<after_only_degree_words_file>" + m_dir.file("after_only.txt") + "</after_only_degree_words_file>"
           "<before_only_degree_words_file>" + m_dir.file("before_only.txt") + "</before_only_degree_words_file>";
  }

  // One label from "att/tag" and "senti/tag" items, each with optional
  // modifiers written as in toks(): "m/10 word/22".
  SentiLabel label(const std::string& att, const std::string& senti) {
    SentiLabel l;
    fill(l.att, att, 0);
    fill(l.senti, senti, 1);
    return l;
  }

  double score(const std::string& items) { return scoreItems(m_scorer, items); }

  TempDir m_dir;
  SentiLabelSentiScorer m_scorer;

 private:
  // Modifiers before the word, the word (the first item of tag 20 to 23 or
  // 6 to 9), then modifiers after it.
  static void fill(modular::Unit& unit, const std::string& items, int position) {
    for (const Token& t : toks(items)) {
      const bool word = t.tag < Token::TG_DEGREE_10 || t.tag > Token::TG_EN_NEGATION;
      if (word && unit.isEmpty()) {
        unit.setWord(t, position);
      } else {
        (unit.isEmpty() ? unit.before : unit.after).push_back(t);
      }
    }
  }
};

TEST_F(LabelScorerTest, ModifierFactors) {
  const std::pair<const char*, double> before[] = {
      {"", 1.0}, {"a/10", 1.5}, {"a/13", 0.5}, {"a/14", 0.0}, {"a/16", -0.5}, {"a/12", 1.0},
      // Two: the larger of two degree words, not their product; negation and
      // degree differ by order.
      {"a/10 a/13", 1.5}, {"a/15 a/10", -0.16666666666666666}, {"a/10 a/15", -0.75},
      {"a/16 a/11", -0.20833333333333334}, {"a/11 a/15", -0.6}, {"a/13 a/16", -0.25}, {"a/15 a/14", -0.5},
      {"a/15 a/16", 0.5},
      // Three or more multiply.
      {"a/10 a/11 a/15", 1.5 * 1.2 * -0.5},
      // An after-only word does not count before a word.
      {"indeed/10 a/15", -0.5}, {"so/10 a/15", -0.75}};
  for (const auto& c : before) {
    std::vector<Token> mods = toks(c.first);
    EXPECT_DOUBLE_EQ(c.second, m_scorer.modifyBoost(mods, true)) << c.first;
  }
  const std::pair<const char*, double> after[] = {
      // After the word an English negation is dropped, and so is a
      // before-only word.
      {"a/16", 1.0}, {"a/15", -0.5}, {"a/16 a/10", 1.5}, {"so/10 a/15", -0.5}, {"indeed/10 a/15", -0.75}};
  for (const auto& c : after) {
    std::vector<Token> mods = toks(c.first);
    EXPECT_DOUBLE_EQ(c.second, m_scorer.modifyBoost(mods, false)) << c.first;
  }
}

TEST_F(LabelScorerTest, LabelValues) {
  bool exact = true;
  const struct {
    const char* att;
    const char* senti;
    double value;
  } cases[] = {
      // Attribute alone: only tag 22 carries a value, corrected by its modifiers.
      {"price/22", "", -0.6}, {"a/15 price/22", "", 0.3}, {"price/21", "", 0.0}, {"room/22", "", 0.0},
      // Word alone: a strong tag overrules the lexicon's other sign (tag 7
      // with +0.8 gives -1); a tag-6 word with a negative value is plainly
      // positive; 8 and 9 have no value of their own.
      {"", "dirty/7", -1.0}, {"", "m/10 dirty/7", -1.5}, {"", "small/6", 1.0}, {"", "small/20", -0.4},
      {"", "clean/20", 0.7}, {"", "good/8", 0.0}, {"", "good/6", 1.0}, {"", "a/15 clean/20", -0.35},
      // An attribute's negation turns the word.
      {"a/15 size/21", "small/20", 0.2},
      // A pair value below 0.99 stands, even against the word's own sign.
      {"price/22", "high/20", -0.5},
      // With modifiers the full key is tried first, then the plain key times
      // both boosts.
      {"not/15 room/21", "big/20", 0.3}, {"price/22", "a/10 high/20", -0.75},
      // A pair value of 1.0 is a default: agreeing with the word, the word's
      // value wins; disagreeing, the pair's.
      {"room/21", "clean/20", 0.7}, {"room/21", "dirty/20", -1.0}, {"room/21", "dirty/7", -1.0},
      // Nothing known of the pair or the word: the attribute's value.
      {"price/22", "odd/20", -0.6}, {"room/21", "odd/20", 0.0},
  };
  for (const auto& c : cases) {
    SentiLabel l = label(c.att, c.senti);
    EXPECT_DOUBLE_EQ(c.value, m_scorer.getSentiSocre(l)) << c.att << " | " << c.senti;
  }
  SentiLabel pair = label("price/22", "high/20");
  EXPECT_DOUBLE_EQ(-0.5, m_scorer.getSentiSocreByCombine(pair, exact));
  EXPECT_TRUE(exact);
  pair = label("room/21", "clean/20");
  EXPECT_DOUBLE_EQ(1.0, m_scorer.getSentiSocreByCombine(pair, exact));
  EXPECT_FALSE(exact);
  pair = label("", "clean/20");
  EXPECT_DOUBLE_EQ(0.0, m_scorer.getSentiSocreByCombine(pair, exact));
  EXPECT_FALSE(exact);
}

TEST_F(LabelScorerTest, TextScores) {
  // score = sum / (0.05 c + 3 + |sum|), c counting English words of 2 to 50
  // letters (and Chinese words); one-letter terms do not count.
  EXPECT_DOUBLE_EQ(0.0, score(""));
  EXPECT_DOUBLE_EQ(0.0, score("ab cd x/10"));
  EXPECT_DOUBLE_EQ(0.25, score("g/6"));
  std::string twenty;
  for (int i = 0; i < 20; ++i) twenty += " ab";
  EXPECT_DOUBLE_EQ(0.2, score("g/6" + twenty));
  // Two labels: -1 (negated pair default) and +1.
  EXPECT_DOUBLE_EQ(0.0, score("room/21 dirty/7 x g/6"));
  // The pair "price high" settles at -0.5; a plain word in between splits
  // it into the attribute's -0.6 and the word's 0.8.
  EXPECT_DOUBLE_EQ(-0.5 / (0.1 + 3.0 + 0.5), score("price/22 high/20"));
  EXPECT_DOUBLE_EQ(0.2 / (0.15 + 3.0 + 1.4), score("price/22 is high/20"));
  // The but-clause weighs double under the position weighter; "but" counts.
  EXPECT_DOUBLE_EQ((2.0 - 1.0) / (0.05 + 3.0 + 3.0), score("b/7 x but/but g/6"));
}

TEST_F(LabelScorerTest, LexiconFileAndConfigFailures) {
  // Round trip, in map order; a repeated key keeps its first value; a stream
  // that ends early keeps what was read.
  const std::string path = m_dir.file("round.bin");
  ASSERT_TRUE(saveLexicon(path, {{"b", 0.5}, {"a", -1.0}, {"服务差", -0.9}}));
  SentiLabelSentiScorer::SentiLabelLexcion back;
  {
    utility::BufferedFileReader reader(path, true);
    ASSERT_TRUE(back.readSelf(reader));
  }
  EXPECT_EQ((std::map<std::string, double>{{"a", -1.0}, {"b", 0.5}, {"服务差", -0.9}}), back.entries());
  // "a" twice, then "c" without its value.
  writeFile(m_dir.file("dup.bin"), SavedBytes().u32(3).str("YQ==").f64(1.0).str("YQ==").f64(2.0).str("Yw==").bytes());
  SentiLabelSentiScorer::SentiLabelLexcion dup;
  {
    utility::BufferedFileReader reader(m_dir.file("dup.bin"), true);
    EXPECT_FALSE(dup.readSelf(reader));
  }
  EXPECT_EQ((std::map<std::string, double>{{"a", 1.0}}), dup.entries());
  writeFile(m_dir.file("empty.bin"), std::string(4, '\0'));
  SentiLabelSentiScorer fresh;
  EXPECT_TRUE(fresh.loadSentiLabelLexcion(m_dir.file("empty.bin")));

  const struct {
    std::string xml;
    std::vector<std::string> messages;
  } failures[] = {
      {config(m_dir.file("missing.bin")),
       {"Fail to Open File " + m_dir.file("missing.bin") + " for Loading Sentiment Label Dict",
        "Failed to Load Sentiment Label Dict from File " + m_dir.file("missing.bin")}},
      {config(m_dir.file("dup.bin")), {"Failed to Load Sentiment Label Dict from File " + m_dir.file("dup.bin")}},
      {"<position_weighter><x/></position_weighter><senti_label_extractor><identifier>"
       "simple_senti_label_extractor</identifier><param><x/></param></senti_label_extractor>",
       {"Failed to Load Sentiment Label Dict from File "}},
      {"<position_weighter><x/></position_weighter><senti_label_extractor><identifier>nope</identifier>"
       "</senti_label_extractor>",
       {"Failed to Init Sentiment Label Extractor with Identifier nope"}},
  };
  for (const auto& f : failures) {
    SentiLabelSentiScorer scorer;
    StdoutCapture log;
    EXPECT_FALSE(scorer.config(*parseXml(f.xml))) << f.xml;
    std::vector<std::string> lines = log.lines();
    ASSERT_EQ(f.messages.size(), lines.size()) << log.str();
    for (size_t i = 0; i < lines.size(); ++i) EXPECT_TRUE(isLogRecord(lines[i], "Warn", "101", f.messages[i])) << lines[i];
    // Not configured: no score, the old value stays.
    std::vector<Token> tokens = toks("g/6");
    double s = 42.0;
    EXPECT_FALSE(scorer.getSentiScore(tokens, s));
    EXPECT_EQ(42.0, s);
  }
}

}  // namespace
