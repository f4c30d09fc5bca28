// The lexicon scorers: standard, weighted and target-aware, on hand-built
// tokens.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "SavedBytes.h"
#include "TestSupport.h"
#include "TokenBuilder.h"
#include "common/CreatorRegister.h"
#include "common/InstanceCreator.h"
#include "modular/StandardLexcionSentiScorer.h"
#include "modular/TargetAwareLexcionSentiScorers.h"
#include "modular/WeightedLexcionSentiScorer.h"
#include "utility/BufferedFileWriter.h"

using namespace vortm;
using namespace vortm::testing;
using analyzer::Token;
using common::AutoPtr;
using common::InstanceCreator;
using modular::ILexcionSentiScorer;
using modular::ITargetAwareLexcionSentiScorer;
using modular::StandardLexcionSentiScorer;
using modular::TargetAwareStandardLexcionSentiScorer;
using modular::TargetAwareWeightedLexcionSentiScorer;
using modular::WeightedLexcionSentiScorer;
using Lexicon = WeightedLexcionSentiScorer::WeightedSentiLexcion;

// Tags 6/7 positive/negative, 8/9 weak negative/positive, 10-14 degree
// words, 15 negation; 1 plain.

TEST(StandardScorerTest, WorkedCases) {
  StandardLexcionSentiScorer scorer;
  ASSERT_TRUE(scorer.config(*parseXml("<position_weighter><but_conj_boost type=\"float\">2.0</but_conj_boost>"
                                        "</position_weighter>")));
  const std::pair<const char*, double> cases[] = {
      // S / A damped by 0.25 per polar word up to four: none, one, two, four, mixed.
      {"", 0.0}, {"a a/10 a/15", 0.0}, {"a/6", 0.25}, {"a a/7 a", -0.25}, {"a/6 a a/6", 0.5},
      {"a/6 a/6 a/6 a/6", 1.0}, {"a/6 a a/6 a a/7", 0.25},
      // Alone a degree word cancels out; tag 10 makes 1.5 against -1: (0.5 / 2.5) x 0.5.
      {"a/10 a/6", 0.25}, {"a/10 a/6 a a/7", 0.1},
      // A negated negative word turns positive at a quarter, negation before or after it.
      {"a/15 a/7 a a/7", -0.3}, {"a/7 a/15", 0.25},
      // A weak word is divided by a strengthening degree and ignores a negation.
      {"a/10 a/8 a a/6", (1.0 - 0.25 / 1.5) / (1.0 + 0.25 / 1.5) * 0.5}, {"a/15 a/9 a a/7", -0.3},
      // The previous neighbour wins even with a neutral factor (1.0, then 1.5 x -1).
      {"a/12 a/6 a/10 a/7", -0.1},
      // A degree word two tokens away does nothing; an erasing one leaves p = 0, yet the word counts.
      {"a/10 a a/6 a a/7", 0.0}, {"a/14 a/6 a a/6", 0.5},
  };
  for (const auto& c : cases) EXPECT_DOUBLE_EQ(c.second, scoreItems(scorer, c.first)) << c.first;
}

TEST(StandardScorerTest, WeighterSettingsAndFailures) {
  // A quoted polar word weighs 0 here: it adds nothing but still counts, so
  // the lone unquoted word scores 1 x 2 x 0.25. A second config keeps that weighter.
  StandardLexcionSentiScorer scorer;
  ASSERT_TRUE(scorer.config(*parseXml("<position_weighter><quota_penalty type=\"float\">0.0</quota_penalty>"
                                        "</position_weighter>")));
  EXPECT_DOUBLE_EQ(0.5, scoreItems(scorer, "good/6 < bad/7 >"));
  ASSERT_TRUE(scorer.config(*parseXml("<position_weighter><quota_penalty type=\"float\">1.0</quota_penalty>"
                                        "</position_weighter>")));
  EXPECT_DOUBLE_EQ(0.5, scoreItems(scorer, "good/6 < bad/7 >"));

  // Without "position_weighter" config succeeds but scoring has no weights.
  StandardLexcionSentiScorer bare;
  ASSERT_TRUE(bare.config(*parseXml("<something>x</something>")));
  std::vector<Token> tokens = toks("good/6");
  double s = 0.0;
  EXPECT_THROW(bare.getSentiScore(tokens, s), std::runtime_error);

  // The registry refuses an unknown or missing identifier and drops the old scorer.
  AutoPtr<ILexcionSentiScorer> made(new StandardLexcionSentiScorer(), true);
  EXPECT_FALSE(ILexcionSentiScorer::configLexcionSentiScorer(*parseXml("<identifier>nope</identifier>"), made));
  EXPECT_TRUE(made.get() == nullptr);
  EXPECT_FALSE(ILexcionSentiScorer::configLexcionSentiScorer(*parseXml("<param>x</param>"), made));
}

TEST(StandardScorerTest, ExplanationComesFromTheScoringPass) {
  StandardLexcionSentiScorer scorer;
  ASSERT_TRUE(scorer.config(*parseXml("<position_weighter><quota_penalty type=\"float\">0.5</quota_penalty>"
                                        "<question_mark_penalty type=\"float\">0.5</question_mark_penalty>"
                                        "<position_aware>true</position_aware></position_weighter>")));
  const char* cases[] = {"", "a a", "a/10 a/6 a a/7", "x/6 but/but y/7 z/15 w/8 .",
                         "< q/6 > though/though r/9 , s/6 ? t/7 . u/6 . v/7", "a/14 a/6 a a/6"};
  for (const char* items : cases) expectExplanationMatchesScore(scorer, items);

  modular::ScoreTrace trace = traceOf(scorer, "x/6 but/but y/7 z/15 w/8 .");
  ASSERT_EQ(3u, trace.words.size());
  EXPECT_EQ("x", trace.words[0].token.term);
  EXPECT_EQ("", trace.words[0].weightReason);
  EXPECT_EQ(-1, trace.words[0].modifierIndex);
  EXPECT_EQ("but", trace.words[1].weightReason);
  EXPECT_DOUBLE_EQ(2.0, trace.words[1].weight);
  // z is a negation right after y: y takes its factor, and w (weak) keeps
  // its value although the same negation stands before it.
  EXPECT_EQ(3, trace.words[1].modifierIndex);
  EXPECT_EQ("z", trace.words[1].modifier.term);
  EXPECT_DOUBLE_EQ(-0.25, trace.words[1].degree);
  EXPECT_DOUBLE_EQ(-0.25, trace.words[2].value);
  EXPECT_DOUBLE_EQ(0.75, trace.damping);  // three polar words

  trace = traceOf(scorer, "< q/6 > though/though r/9 , s/6 ? t/7 . u/6 . v/7");
  ASSERT_EQ(6u, trace.words.size());
  EXPECT_EQ("quote,position", trace.words[0].weightReason);
  EXPECT_EQ("though,position", trace.words[1].weightReason);
  EXPECT_EQ("question,position", trace.words[2].weightReason);
  EXPECT_EQ("position", trace.words[5].weightReason);
}

namespace {

void saveLexicon(const std::string& path, const std::vector<std::pair<std::string, double> >& entries) {
  Lexicon lexicon;
  for (const auto& e : entries) lexicon.m_weights[e.first] = e.second;
  utility::BufferedFileWriter writer(path, true);
  ASSERT_TRUE(lexicon.writeSelf(writer));
  ASSERT_TRUE(writer.close());
}

// A scorer over a small lexicon (g 2.0, w 0.01, n -0.6, p 0.4) and one word
// in each restriction list: q after-only, b before-only, r negative-only,
// s positive-only, l negation sentiment word.
class WeightedScorerTest : public ::testing::Test {
 protected:
  void SetUp() override {
    saveLexicon(m_dir.file("w.lex"), {{"g", 2.0}, {"w", 0.01}, {"n", -0.6}, {"p", 0.4}});
    const char* lists[][2] = {{"after_only_degree_words_file", "q"}, {"before_only_degree_words_file", "b"},
                              {"negative_only_degree_words_file", "r"}, {"positive_only_degree_words_file", "s"},
                              {"negation_senti_words_file", "l"}};
    std::string xml = "<weighted_lexcion_file>" + m_dir.file("w.lex") + "</weighted_lexcion_file>";
    for (const auto& list : lists) {
      const std::string key = list[0];
      writeFile(m_dir.file(key), std::string(list[1]) + "\n");
      xml += "<" + key + ">" + m_dir.file(key) + "</" + key + ">";
    }
    StdoutCapture quiet;
    ASSERT_TRUE(m_scorer.config(*parseXml(xml)));
  }

  double score(const std::string& items) { return scoreItems(m_scorer, items); }

  TempDir m_dir;
  WeightedLexcionSentiScorer m_scorer;
};

}  // namespace

TEST_F(WeightedScorerTest, DegreeWordRestrictions) {
  // previous / current / next -> boost
  const std::pair<const char*, double> cases[] = {
      // Plain neighbours; the previous one wins even when neutral.
      {"x a/6 x", 1.0}, {"x/10 a/6 x", 1.5}, {"x a/6 x/13", 0.5}, {"x/12 a/6 x/10", 1.0},
      {"x/15 a/6 x", -0.25}, {"x/14 a/6 x", 0.0}, {"x a/6 x/15", -0.25},
      // An after-only negation cannot act forwards, and the next word decides.
      {"q/15 a/6 x", 1.0}, {"q/15 a/6 x/10", 1.5}, {"q/14 a/7 x/11", 1.2}, {"q/10 a/6 x", 1.5},
      // A before-only negation cannot act backwards; degree tags ignore the list.
      {"x a/6 b/15", 1.0}, {"x a/6 b/14", 1.0}, {"x a/6 b/10", 1.5}, {"b/15 a/6 x", -0.25},
      // Negative-only words skip positive words, positive-only words skip negative ones.
      {"r/10 a/6 x", 1.0}, {"r/10 a/6 x/13", 0.5}, {"x a/6 r/10", 1.0}, {"r/10 a/7 x", 1.5},
      {"s/11 a/7 x", 1.0}, {"x a/7 s/11", 1.0}, {"s/11 a/6 x", 1.2}, {"r/10 a/9 x", 1.5},
      // A negation sentiment word cancels a strong positive word only.
      {"l a/6 x", 0.0}, {"x a/6 l", 0.0}, {"l/10 a/6 x", 0.0}, {"l a/7 x", 1.0}, {"l a/9 x", 1.0},
  };
  for (const auto& c : cases) {
    std::vector<Token> t = toks(c.first);
    EXPECT_DOUBLE_EQ(c.second, m_scorer.getBoost(t[0], t[1], t[2])) << c.first;
  }
}

TEST_F(WeightedScorerTest, ValuesAndScaling) {
  // D = countable words x 0.125 + 3 + A; halved when A / D < 0.15. One-letter
  // terms are not countable, longer English words are.
  std::string longText = "a/6";
  for (int i = 0; i < 20; ++i) longText += " ab";
  const std::pair<std::string, double> cases[] = {
      {"", 0.0}, {"x x/10", 0.0},
      {"a/6", 0.25}, {"a/7", -0.25}, {"a/9", 0.25 / 3.25 * 0.5}, {"a/8", -0.25 / 3.25 * 0.5},
      {"ab/6 cd ef", 1.0 / 4.375},
      // 20 countable words: A / D = 1 / 6.5 stays above 0.15; 22 tip it under.
      {longText, 1.0 / 6.5}, {longText + " ab ab", 1.0 / 6.75 * 0.5},
      // The lexicon sharpens a strong word but never turns its sign.
      {"g/6", 2.0 / 5.0}, {"g/7", -0.25}, {"n/6", 0.25}, {"n/7", -0.6 / 3.6}, {"p/6", 0.4 / 3.4 * 0.5},
      // Tags 20 and 22 take the lexicon weight or nothing; weak tags ignore it.
      {"x/10 n/20", -0.9 / 3.9}, {"n/22", -0.6 / 3.6}, {"x/20", 0.0}, {"g/9", 0.25 / 3.25 * 0.5},
      // At 0.01 a word is too weak for a boost.
      {"x/15 w/6", 0.01 / 3.01 * 0.5},
      // Weak words: divided by a strengthening degree, deaf to a negation.
      {"x/10 a/8", -(0.25 / 1.5) / (3.0 + 0.25 / 1.5) * 0.5}, {"x/15 a/8", -0.25 / 3.25 * 0.5},
      // A negated negative word turns positive at a quarter; mixed words partly cancel.
      {"x/15 a/7", 0.25 / 3.25 * 0.5}, {"a/6 x a/7 x a/6", 1.0 / 6.0},
      // Position weights multiply in: the but-clause counts double.
      {"a/7 , x/but a/6", 1.0 / 6.0},
  };
  for (const auto& c : cases) EXPECT_DOUBLE_EQ(c.second, score(c.first)) << c.first;
}

TEST_F(WeightedScorerTest, ExplanationComesFromTheScoringPass) {
  const char* cases[] = {"", "x x/10", "g/6 x/15 a/7 , x/but n/20", "l a/6 x/10 a/8 w/6", "q/15 a/6 x/10 p/22",
                         "a/6 x a/7 x a/6 ab cd", "x/15 w/6 a/9"};
  for (const char* items : cases) expectExplanationMatchesScore(m_scorer, items);

  // The factor and the word that gave it, as getBoost decides; the divisor
  // and the halving of a text with little opinion.
  double s = 0.0;
  const modular::ScoreTrace trace = traceOf(m_scorer, "l a/6 q/15 a/7 x/10 , x/but w/6", &s);
  ASSERT_EQ(3u, trace.words.size());
  EXPECT_EQ(0, trace.words[0].modifierIndex);  // "lack" before a positive word
  EXPECT_DOUBLE_EQ(0.0, trace.words[0].degree);
  EXPECT_DOUBLE_EQ(0.0, trace.words[0].contribution);
  // An after-only negation before a/7 is passed over for the degree word after it.
  EXPECT_EQ(4, trace.words[1].modifierIndex);
  EXPECT_EQ("x", trace.words[1].modifier.term);
  EXPECT_DOUBLE_EQ(1.5, trace.words[1].degree);
  // Too weak for a boost, but doubled in the but-clause.
  EXPECT_EQ(-1, trace.words[2].modifierIndex);
  EXPECT_EQ("but", trace.words[2].weightReason);
  EXPECT_DOUBLE_EQ(2.0, trace.words[2].weight);
  EXPECT_DOUBLE_EQ(3.0 + 1.5 + 0.02, trace.divisor);
  EXPECT_DOUBLE_EQ(1.0, trace.damping);
  EXPECT_DOUBLE_EQ((-1.5 + 0.02) / 4.52, s);
}

TEST(WeightedLexiconTest, RoundTripAndHostileFiles) {
  TempDir dir;
  const std::string path = dir.file("w.lex");
  saveLexicon(path, {{"好", 1.25}, {"bad", -0.5}, {"", 0.0}});
  WeightedLexcionSentiScorer scorer;
  ASSERT_TRUE(scorer.loadWeightedLexcion(path));
  const std::map<std::string, double> expected = {{"好", 1.25}, {"bad", -0.5}, {"", 0.0}};
  EXPECT_EQ(expected, scorer.lexcion().m_weights);

  // A repeated word keeps its first weight; a count of 0 is an empty lexicon.
  writeFile(dir.file("dup.lex"), SavedBytes().u32(2).str("YQ==").f64(1.0).str("YQ==").f64(2.0).bytes());  // "a" twice
  writeFile(dir.file("empty.lex"), SavedBytes().u32(0).bytes());
  WeightedLexcionSentiScorer dup;
  ASSERT_TRUE(dup.loadWeightedLexcion(dir.file("dup.lex")));
  EXPECT_EQ((std::map<std::string, double>{{"a", 1.0}}), dup.lexcion().m_weights);
  WeightedLexcionSentiScorer empty;
  EXPECT_TRUE(empty.loadWeightedLexcion(dir.file("empty.lex")));
  EXPECT_TRUE(empty.lexcion().m_weights.empty());

  // Every proper prefix of a saved lexicon fails to load, as does a forged count.
  const std::string bytes = readFile(path);
  for (size_t cut = 0; cut < bytes.size(); ++cut) {
    writeFile(dir.file("cut.lex"), bytes.substr(0, cut));
    WeightedLexcionSentiScorer cutScorer;
    StdoutCapture quiet;
    EXPECT_FALSE(cutScorer.loadWeightedLexcion(dir.file("cut.lex"))) << cut;
  }
  std::string forged = bytes;
  forged[0] = '\x7f';
  writeFile(dir.file("forged.lex"), forged);
  WeightedLexcionSentiScorer forgedScorer;
  EXPECT_FALSE(forgedScorer.loadWeightedLexcion(dir.file("forged.lex")));
}

TEST(WeightedLexiconTest, ConfigFailuresAndOptionalLists) {
  TempDir dir;
  const auto configure = [](const std::string& xml, std::vector<std::string>& log) {
    WeightedLexcionSentiScorer scorer;
    StdoutCapture capture;
    const bool ok = scorer.config(*parseXml(xml));
    log = capture.lines();
    return ok;
  };
  std::vector<std::string> log;
  // The lexicon is required: no key fails like an empty path.
  EXPECT_FALSE(configure("<position_weighter><but_conj_boost type=\"float\">2.0</but_conj_boost>"
                         "</position_weighter>",
                         log));
  ASSERT_EQ(1u, log.size());
  EXPECT_TRUE(isLogRecord(log[0], "Warn", "101", "Failed to Load Weighted Sentiment Lexcion from File "));

  const std::string missing = dir.file("missing.lex");
  EXPECT_FALSE(configure("<weighted_lexcion_file>" + missing + "</weighted_lexcion_file>", log));
  ASSERT_EQ(2u, log.size());
  EXPECT_TRUE(isLogRecord(log[0], "Warn", "101",
                          "Fail to Open File " + missing + " for Loading Weighted Sentiment Lexcion"));
  EXPECT_TRUE(isLogRecord(log[1], "Warn", "101", "Failed to Load Weighted Sentiment Lexcion from File " + missing));

  writeFile(dir.file("short.lex"), std::string("\0\0\0\5", 4));
  EXPECT_FALSE(configure("<weighted_lexcion_file>" + dir.file("short.lex") + "</weighted_lexcion_file>", log));
  ASSERT_EQ(1u, log.size());
  EXPECT_TRUE(isLogRecord(log[0], "Warn", "101",
                          "Failed to Load Weighted Sentiment Lexcion from File " + dir.file("short.lex")));

  // Word lists that cannot be read are no failure, and without a
  // position_weighter element the scorer still weighs with the defaults.
  saveLexicon(dir.file("ok.lex"), {});
  WeightedLexcionSentiScorer scorer;
  StdoutCapture quiet;
  ASSERT_TRUE(scorer.config(*parseXml("<weighted_lexcion_file>" + dir.file("ok.lex") +
                                        "</weighted_lexcion_file><negation_senti_words_file>" +
                                        dir.file("none.txt") + "</negation_senti_words_file>")));
  std::vector<Token> tokens = toks("a/7 , x/but a/6");
  double s = 0.0;
  ASSERT_TRUE(scorer.getSentiScore(tokens, s));
  EXPECT_DOUBLE_EQ(1.0 / 6.0, s);
}

namespace {

double score(ITargetAwareLexcionSentiScorer& scorer, const std::string& items, const std::vector<std::string>& targets) {
  std::vector<Token> tokens = toks(items);
  double s = 99.0;
  EXPECT_TRUE(scorer.getSentiScore(tokens, targets, s)) << items;
  return s;
}

}  // namespace

TEST(TargetAwareScorerTest, StandardScoringNearTheTarget) {
  // No position_weighter and no target_aware_position_weighter: both fine.
  TargetAwareStandardLexcionSentiScorer scorer;
  ASSERT_TRUE(scorer.config(*parseXml("<none></none>")));
  const std::string text = "good/6 phone/target x bad/7";
  // No targets, a target not in the text, or one only on an untagged token: all weights 0.
  EXPECT_DOUBLE_EQ(0.0, score(scorer, text, {}));
  EXPECT_DOUBLE_EQ(0.0, score(scorer, text, {"camera"}));
  EXPECT_DOUBLE_EQ(0.0, score(scorer, "good/6 phone x bad/7", {"phone"}));
  EXPECT_DOUBLE_EQ(0.0, score(scorer, "phone/target", {"phone"}));
  // good is one token from the target, bad two: raw weights 3 / 4.1 and 2 / 4.1.
  EXPECT_DOUBLE_EQ((3.0 - 2.0) / (3.0 + 2.0) * 0.5, score(scorer, text, {"camera", "phone"}));
  // The targets stay set for the plain call.
  std::vector<Token> tokens = toks(text);
  double s = 0.0;
  ASSERT_TRUE(scorer.getSentiScore(tokens, s));
  EXPECT_DOUBLE_EQ(0.1, s);
  EXPECT_EQ((std::vector<std::string>{"camera", "phone"}), scorer.getTargets());
}

TEST(TargetAwareScorerTest, WeightedScoringAndRegistry) {
  TempDir dir;
  saveLexicon(dir.file("w.lex"), {});
  common::gfn_creatorRegister();
  AutoPtr<ITargetAwareLexcionSentiScorer> made(
      InstanceCreator<ITargetAwareLexcionSentiScorer>::getCreation("target_aware_weighted_lexcion_senti_scorer"), true);
  ASSERT_TRUE(made);
  // The standard one resolves only once a host has built its creator.
  EXPECT_EQ(nullptr,
            InstanceCreator<ITargetAwareLexcionSentiScorer>::getCreation("target_aware_std_lexcion_senti_scorer"));
  {
    // The registry keeps a plain pointer to the creator, so it must outlive the test.
    static modular::TargetAwareStandardLexcionSentiScorerCreator creator;
    AutoPtr<ITargetAwareLexcionSentiScorer> standard(
        InstanceCreator<ITargetAwareLexcionSentiScorer>::getCreation("target_aware_std_lexcion_senti_scorer"), true);
    EXPECT_TRUE(standard);
  }

  // The base's failure is the only one.
  {
    StdoutCapture quiet;
    EXPECT_FALSE(made->config(*parseXml("<weighted_lexcion_file>" + dir.file("none.lex") +
                                          "</weighted_lexcion_file>")));
  }
  TargetAwareWeightedLexcionSentiScorer scorer;
  ASSERT_TRUE(scorer.config(*parseXml("<weighted_lexcion_file>" + dir.file("w.lex") + "</weighted_lexcion_file>")));
  EXPECT_DOUBLE_EQ(0.0, score(scorer, "good/6 phone/target x bad/7", {}));
  EXPECT_DOUBLE_EQ(0.0, score(scorer, "phone/target", {"phone"}));
  // Weights normalised to average 1 over four tokens: raw 3, 4.1, 3 and 2
  // (over 4.1). good, phone and bad are countable.
  const double total = 3.0 + 4.1 + 3.0 + 2.0;
  const double sum = (3.0 - 2.0) / total * 4.0;
  const double absSum = (3.0 + 2.0) / total * 4.0;
  EXPECT_DOUBLE_EQ(sum / (3 * 0.125 + 3.0 + absSum), score(scorer, "good/6 phone/target x bad/7", {"phone"}));
}
