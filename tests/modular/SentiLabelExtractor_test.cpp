#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TestSupport.h"
#include "TokenBuilder.h"
#include "modular/SimpleSentiLabelExtractor.h"

using namespace vortm;
using namespace vortm::testing;
using analyzer::Token;
using common::AutoPtr;
using modular::SentiLabel;
using modular::SentiLabelExtractor;
using modular::SimpleSentiLabelExtractor;
using modular::Unit;

namespace {

// The word lists live for the whole process, so every test configures with
// the same files; whichever runs first loads them.
//   intermediary: of, the     negation-sentiment: no     sentiment-negation: lack
//   degree: very 2, quite 2 then 4; zero, seven and bare carry no valid level.
AutoPtr<SentiLabelExtractor> configured() {
  static TempDir dir;
  writeFile(dir.file("inter.txt"), "of\nthe\n");
  writeFile(dir.file("negsenti.txt"), "no\n");
  writeFile(dir.file("sentineg.txt"), "lack\n");
  writeFile(dir.file("degree.txt"), "very 2\nquite 2\nquite\t4\nzero 0\nseven 7\nbare\n");
  AutoPtr<SentiLabelExtractor> ex(new SimpleSentiLabelExtractor(), true);
  EXPECT_TRUE(ex->config(*parseXml("<inter_words_file>" + dir.file("inter.txt") +
                                     "</inter_words_file><negation_senti_words_file>" + dir.file("negsenti.txt") +
                                     "</negation_senti_words_file><senti_negation_words_file>" +
                                     dir.file("sentineg.txt") + "</senti_negation_words_file>"
                                     "<senti_degree_words_file>" + dir.file("degree.txt") +
                                     "</senti_degree_words_file>")));
  return ex;
}

// A unit as "mod:tag[word]mod:tag"; a label as "att|senti".
std::string show(const Unit& u) {
  if (u.isEmpty()) return "";
  std::string out;
  for (const Token& t : u.before) out += t.term + ":" + std::to_string(t.tag) + " ";
  out += "[" + u.term + "]";
  for (const Token& t : u.after) out += " " + t.term + ":" + std::to_string(t.tag);
  return out;
}

std::string show(const std::vector<SentiLabel>& labels) {
  std::string out;
  for (const SentiLabel& l : labels) out += (out.empty() ? "" : " ; ") + show(l.att) + "|" + show(l.senti);
  return out;
}

std::vector<SentiLabel> run(SentiLabelExtractor& ex, const std::string& items) {
  std::vector<Token> tokens = toks(items);
  std::vector<SentiLabel> labels;
  EXPECT_TRUE(ex.extract(tokens, labels)) << items;
  return labels;
}

}  // namespace

// Items are "word/tag": 6-9 general sentiment (G), 20/23 sentiment needing
// an attribute (S), 21/22 attributes (A), 10-16 modifiers (M); a bare word is
// plain (O).
TEST(SentiLabelExtractorTest, GrammarTable) {
  AutoPtr<SentiLabelExtractor> ex = configured();
  const std::pair<const char*, const char*> cases[] = {
      {"", ""},
      // What stands alone: G, S(20) and A(22) do; S(23) and A(21) do not.
      {"g/6", "|[g]"}, {"s/20", "|[s]"}, {"s/23", ""}, {"a/22", "[a]|"}, {"a/21", ""},
      {"a/21 s/23", "[a]|[s]"},
      // Attribute before or after the word, and one attribute for two words.
      {"a/21 s/20", "[a]|[s]"}, {"s/20 a/21", "[a]|[s]"}, {"a/21 s/20 t/20", "[a]|[s] ; [a]|[t]"},
      // Modifiers: before the word, after it, dropped by a plain word unless
      // it is an intermediary.
      {"m/10 g/6", "|m:10 [g]"}, {"g/6 m/10 x", "|[g] m:10"}, {"m/10 x g/6", "|[g]"},
      {"m/10 of g/6", "|m:10 [g]"},
      // Tag 21 leaves the modifiers in between to the word before it, 22 takes them.
      // Behind the last word, what pends at the end replaces its modifiers.
      {"s/20 m/15 a/21 t/20", "[a]|[s] m:15 ; |[t]"}, {"s/20 m/15 a/21", "[a]|[s]"},
      {"s/20 m/15 a/22", "m:15 [a]|[s]"},
      {"a/22 m/15 x", "[a] m:15|"}, {"a/21 m/15 s/20", "[a]|m:15 [s]"},
      {"s/20 a/22 m/10 b/21", "[a]|[s] m:10"},
      // An intermediary keeps an S opinion open but ends a G one at once.
      {"s/20 of a/21", "[a]|[s]"}, {"s/20 of a/22", "[a]|[s]"}, {"g/6 of a/22", "|[g] ; [a]|"},
      // Attributes in a row each close the one before.
      {"a/22 b/22 s/20", "[a]| ; [b]|[s]"}, {"a/21 m/13 b/21 s/20", "[b]|[s]"},
      // G after S: a plain S word is emitted on its own, a degree word waits
      // and becomes the next word's modifier (level 2 -> tag 11, quite: the
      // later level 4 -> tag 13).
      {"bad/20 g/6", "|[bad] ; |[g]"}, {"very/20 g/6", "|very:11 [g]"}, {"quite/20 g/7", "|quite:13 [g]"},
      // Lines without a valid level never made it into the map.
      {"zero/20 g/6", "|[zero] ; |[g]"}, {"seven/20 g/6", "|[seven] ; |[g]"},
      // An already modified word is not demoted.
      {"m/10 very/20 g/6", "|m:10 [very] ; |[g]"},
      // Negating words: "no" negates the next word and stays a word; "lack"
      // becomes a negation only; "no" last also negates the word before.
      {"no/20 s/20", "|[no] ; |no:15 [s]"}, {"lack/20 s/20", "|lack:15 [s]"}, {"s/20 no/20", "|[s] no:15 ; |[no]"},
      {"very/20 s/20 t/20", "|very:11 [s] ; |[t]"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.second, show(run(*ex, c.first))) << c.first;
}

TEST(SentiLabelExtractorTest, WalkBookkeeping) {
  AutoPtr<SentiLabelExtractor> ex = configured();
  // Labels already in the list stay in front, and each walk starts afresh.
  std::vector<Token> tokens = toks("x a/21 m/15 s/20 y");
  std::vector<SentiLabel> labels(1);
  ASSERT_TRUE(ex->extract(tokens, labels));
  ASSERT_TRUE(ex->extract(tokens, labels));
  ASSERT_EQ(3u, labels.size());
  EXPECT_TRUE(labels[0].att.isEmpty() && labels[0].senti.isEmpty());
  const SentiLabel& l = labels[1];
  EXPECT_EQ(1, l.att.position);
  EXPECT_EQ(3, l.senti.position);
  EXPECT_EQ(-1, l.position);
  // Offsets: tokens are laid end to end from byte 0 ("x" is byte 0).
  EXPECT_EQ(tokens[1].startOffset, l.getStartOffsetInternal());
  EXPECT_EQ(tokens[3].endOffset, l.getEndOffsetInternal());
  EXPECT_EQ(show(labels[1].att) + show(labels[1].senti), show(labels[2].att) + show(labels[2].senti));

  // Every label's words lie in the text, in order.
  std::vector<Token> text = toks("m/10 a/21 s/20 of b/22 m/15 g/6 t/20 x no/20 very/20 g/7");
  std::vector<SentiLabel> found;
  ASSERT_TRUE(ex->extract(text, found));
  int last = -1;
  for (const SentiLabel& f : found) {
    const Unit& u = f.senti.isEmpty() ? f.att : f.senti;
    ASSERT_GE(u.position, 0);
    ASSERT_LT(u.position, static_cast<int>(text.size()));
    EXPECT_EQ(text[u.position].term, u.term);
    EXPECT_GE(u.position, last);
    last = u.position;
  }

  // A clone walks alone from INIT; a string needs an analyzer.
  AutoPtr<SentiLabelExtractor> copy = ex->clone();
  EXPECT_EQ("[a]|m:15 [s]", show(run(*copy, "a/21 m/15 s/20")));
  std::vector<SentiLabel> none;
  EXPECT_FALSE(ex->extract(std::string("good"), none));
  EXPECT_TRUE(none.empty());
  // Unconfigured: no state, no labels, false.
  SimpleSentiLabelExtractor bare;
  EXPECT_FALSE(bare.extract(tokens, none));
  EXPECT_TRUE(none.empty());
}

TEST(SentiLabelExtractorTest, WordListsAreLoadedOncePerProcess) {
  configured();
  // Other files, even missing ones, are never read: the first lists stay.
  SimpleSentiLabelExtractor other;
  StdoutCapture log;
  ASSERT_TRUE(other.config(*parseXml("<inter_words_file>/nonexistent/a</inter_words_file>"
                                       "<senti_degree_words_file>/nonexistent/b</senti_degree_words_file>")));
  EXPECT_EQ("", log.str());
  EXPECT_EQ("|very:11 [g]", show(run(other, "very/20 g/6")));
  // A broken analyzer block fails with its own message.
  SimpleSentiLabelExtractor broken;
  EXPECT_FALSE(broken.config(*parseXml("<text_analyzer_for_senti_label_extract><analyzer><encode>utf-8</encode><tokenizers><t>"
                                         "<identifier>trieDictMaxForwardTokenzier</identifier><param><encode>utf-8"
                                         "</encode><dict_file>/nonexistent</dict_file></param></t></tokenizers>"
                                         "</analyzer></text_analyzer_for_senti_label_extract>")));
  ASSERT_FALSE(log.lines().empty());
  EXPECT_TRUE(isLogRecord(log.lines().back(), "Warn", "101", "Failed to Init Text Analyzer for Sentiment Label Extract"))
      << log.str();
}

TEST(SentiLabelExtractorTest, UnitModifiers) {
  Unit u;
  EXPECT_TRUE(u.isEmpty());
  EXPECT_EQ("", u.toString());
  u.setWord(Token("good", 4, 7, Token::TT_EN_WORD, Token::TG_POSITIVE), 1);
  u.before = {Token("very", 0, 3, Token::TT_EN_WORD, Token::TG_DEGREE_10)};
  u.after = {Token("not", 8, 10, Token::TT_EN_WORD, Token::TG_NEGATION)};
  EXPECT_EQ("verygoodnot", u.toString());
  // A non-empty `before` hides `after` for negation.
  EXPECT_FALSE(u.isNegation());
  u.before.clear();
  EXPECT_TRUE(u.isNegation());
  u.before = {Token("not", 0, 2, Token::TT_EN_WORD, Token::TG_NEGATION),
              Token("no", 0, 1, Token::TT_EN_WORD, Token::TG_EN_NEGATION)};
  EXPECT_FALSE(u.isNegation());
  EXPECT_FALSE(u.isPolarityErase());
  u.after = {Token("hardly", 8, 13, Token::TT_EN_WORD, Token::TG_DEGREE_14)};
  EXPECT_FALSE(u.isPolarityErase());
  u.before.push_back(Token("hardly", 0, 5, Token::TT_EN_WORD, Token::TG_DEGREE_14));
  EXPECT_TRUE(u.isPolarityErase());

  // Offsets come from the first modifier before each side, and an empty
  // side does not count.
  SentiLabel label;
  EXPECT_EQ(-1, label.getStartOffsetInternal());
  EXPECT_EQ(-1, label.getEndOffsetInternal());
  label.senti.setWord(Token("bad", 20, 22), 5);
  label.senti.before = {Token("so", 17, 18), Token("very", 30, 33)};
  label.senti.after = {Token("indeed", 40, 45)};
  EXPECT_EQ(17, label.getStartOffsetInternal());
  EXPECT_EQ(22, label.getEndOffsetInternal());
  label.att.setWord(Token("room", 5, 8), 1);
  EXPECT_EQ(5, label.getStartOffsetInternal());
  EXPECT_EQ(22, label.getEndOffsetInternal());
}
