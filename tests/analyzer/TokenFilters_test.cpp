#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TestSupport.h"
#include "analyzer/Analyzer.h"
#include "analyzer/BasicEWordTokenFilter.h"
#include "analyzer/BasicNgramTokenFilter.h"
#include "analyzer/NegationTokenFilter.h"
#include "analyzer/SimpleEnNegationTokenFilter.h"
#include "analyzer/SkipNegationTokenFilter.h"
#include "analyzer/TokenBuffer.h"
#include "common/AutoPtr.h"
#include "configure/BasicParamParser.h"
#include "configure/Parameter.h"

using namespace vortm::analyzer;
using vortm::common::AutoPtr;
using vortm::configure::BasicParamParser;
using vortm::configure::Parameter;
using vortm::testing::StdoutCapture;
using vortm::testing::TempDir;
using vortm::testing::isLogRecord;
using vortm::testing::writeFile;

namespace {

typedef std::vector<std::string> Out;

AutoPtr<Parameter> parse(const std::string& xml) {
  BasicParamParser parser;
  AutoPtr<Parameter> root;
  EXPECT_TRUE(parser.doParseFromText(xml, root));
  return root;
}

// Feeds the tokens in order; a kept token shows as "term/tag", a dropped one
// as "-".
Out run(TokenFilter& filter, std::vector<Token> tokens) {
  Out out;
  for (Token& t : tokens) out.push_back(filter.filter(t) ? "-" : t.term + "/" + std::to_string(t.tag));
  return out;
}

Token en(const std::string& term, int start, Token::TTag tag = Token::TG_PLAIN) {
  return Token(term, start, start + static_cast<int>(term.size()) - 1, Token::TT_EN_WORD, tag);
}
Token negation(int start, int end) { return Token("bu", start, end, Token::TT_CH_WORD, Token::TG_NEGATION); }
Token good(int start) { return en("good", start, Token::TG_POSITIVE); }
Token bad(int start) { return en("bad", start, Token::TG_NEGATIVE); }
Token ngram(int start) { return Token("g" + std::to_string(start), start, start + 5, Token::TT_NGRAM); }

}  // namespace

TEST(TokenFilterTest, EnglishWordsAreTaggedByTheirLists) {
  TempDir dir;
  writeFile(dir.file("pos"), "good\nfine 0.5\n");
  writeFile(dir.file("neg"), "bad\nfine\n");
  writeFile(dir.file("stop"), "the\n");
  writeFile(dir.file("negation"), "not\n");
  const std::string files = "<en_pos_senti_file>" + dir.file("pos") + "</en_pos_senti_file><en_neg_senti_file>" +
                            dir.file("neg") + "</en_neg_senti_file><en_stopword_file>" + dir.file("stop") +
                            "</en_stopword_file><en_negation_word_file>" + dir.file("negation") +
                            "</en_negation_word_file>";
  const std::vector<Token> input = {en("a", 0), en("ab", 2),  en("GOOD", 5), en("fine", 10),
                                    en("Not", 15), en("the", 19), en("Bad", 23), Token("X", 27, 27)};

  BasicEWordTokenFilter filter;
  ASSERT_TRUE(filter.config(*parse(files)));
  // One-byte words go; "fine" is on both lists and counts as positive; the
  // stop word stays, only tagged; a non-English token is left alone.
  const Out expected = {"-", "ab/1", "good/6", "fine/6", "not/16", "the/17", "bad/7", "X/1"};
  EXPECT_EQ(expected, run(filter, input));

  // "stem" changes nothing.
  BasicEWordTokenFilter stemming;
  ASSERT_TRUE(stemming.config(*parse(files + "<stem>True</stem>")));
  EXPECT_EQ(expected, run(stemming, input));

  // Without lower-casing the lower-case lists miss "GOOD"; a clone keeps
  // the flag and shares the lists.
  BasicEWordTokenFilter asIs;
  ASSERT_TRUE(asIs.config(*parse(files + "<to_lowcase>FALSE</to_lowcase>")));
  const Out unfolded = {"-", "ab/1", "GOOD/1", "fine/6", "Not/1", "the/17", "Bad/1", "X/1"};
  EXPECT_EQ(unfolded, run(asIs, input));
  EXPECT_EQ(unfolded, run(*asIs.cloneIgnoringState(), input));
}

TEST(TokenFilterTest, NegationFilterTracksButNeverRewrites) {
  NegationTokenFilter filter;
  ASSERT_TRUE(filter.config(Parameter()));
  EXPECT_EQ((Out{"bu/15", "good/6", "hen/10", "bu/15", "bad/7", "bu/15", "bu/15", "good/6"}),
            run(filter, {negation(0, 2), good(4), Token("hen", 9, 11, Token::TT_CH_WORD, Token::TG_DEGREE_10),
                         negation(13, 15), bad(17), negation(21, 23), negation(24, 26), good(27)}));
}

TEST(TokenFilterTest, SkipNegationMarksTheFirstSentimentWordInReach) {
  // Negation ending at byte 10: a positive word at 22 is still reached, over
  // a plain word; the rewrite closes the scope for the word behind it.
  SkipNegationTokenFilter reach;
  EXPECT_EQ((Out{"bu/15", "x/1", "NOT_good/8", "bad/7"}),
            run(reach, {negation(8, 10), Token("x", 15, 15), good(22), bad(27)}));
  // At 23 it is out of reach.
  SkipNegationTokenFilter beyond;
  EXPECT_EQ((Out{"bu/15", "good/6"}), run(beyond, {negation(8, 10), good(23)}));

  // A negation ending at byte 0 counts as none seen.
  SkipNegationTokenFilter atStart;
  EXPECT_EQ((Out{"n/15", "bad/7"}),
            run(atStart, {Token("n", 0, 0, Token::TT_SYMBOL, Token::TG_NEGATION), bad(2)}));

  // Two negations cancel, and the count stays at two: a third one within
  // reach makes it odd again.
  SkipNegationTokenFilter twice;
  EXPECT_EQ((Out{"bu/15", "bu/15", "good/6", "bu/15", "NOT_bad/9"}),
            run(twice, {negation(3, 5), negation(6, 8), good(10), negation(15, 17), bad(19)}));

  // Clause punctuation closes the scope; a symbol does not.
  SkipNegationTokenFilter clause;
  EXPECT_EQ((Out{"bu/15", ",/1", "good/6", "bu/15", "\"/1", "NOT_good/8"}),
            run(clause, {negation(3, 5), Token(",", 6, 6, Token::TT_CLAUSE_PUNC), good(7), negation(9, 11),
                         Token("\"", 12, 12), good(13)}));

  // A negation listed as after-only does not open a scope. A clone shares
  // that list but not the open scope of the original.
  TempDir dir;
  writeFile(dir.file("after"), "bu\n");
  SkipNegationTokenFilter afterOnly;
  ASSERT_TRUE(afterOnly.config(*parse("<after_only_degree_words_file>" + dir.file("after") +
                                      "</after_only_degree_words_file>")));
  Token mei("mei", 3, 5, Token::TT_CH_WORD, Token::TG_NEGATION);
  EXPECT_EQ((Out{"bu/15", "good/6", "mei/15"}), run(afterOnly, {negation(3, 5), good(7), mei}));
  AutoPtr<TokenFilter> clone = afterOnly.cloneIgnoringState();
  EXPECT_EQ((Out{"good/6", "bu/15", "good/6"}), run(*clone, {good(7), negation(9, 11), good(13)}));
  EXPECT_EQ((Out{"NOT_good/8"}), run(afterOnly, {good(7)}));
}

TEST(TokenFilterTest, NgramsInsideAndBehindANegationAreDropped) {
  TempDir dir;
  writeFile(dir.file("negation"), "\xE4\xB8\x8D\n");
  BasicNgramTokenFilter filter;
  ASSERT_TRUE(filter.config(*parse("<ch_negation_word_file>" + dir.file("negation") + "</ch_negation_word_file>")));
  Token word("\xE4\xB8\x8D", 6, 8, Token::TT_NGRAM);
  // Only n-grams are thinned: the word token at 7 stays.
  EXPECT_EQ((Out{"g3/1", "\xE4\xB8\x8D/1", "g6/1", "-", "-", "-", "w/1", "g10/1"}),
            run(filter, {ngram(3), word, ngram(6), ngram(7), ngram(8), ngram(9), Token("w", 7, 7), ngram(10)}));
}

TEST(TokenFilterTest, SimpleEnglishNegationPrefixesTheNextWord) {
  SimpleEnNegationTokenFilter filter;
  ASSERT_TRUE(filter.config(Parameter()));
  Token no = en("not", 0, Token::TG_EN_NEGATION);
  EXPECT_EQ((Out{"not/16", "not-good/6", "good/6"}), run(filter, {no, good(4), good(9)}));
  // An even run leaves the word and closes the scope; so does a symbol.
  EXPECT_EQ((Out{"not/16", "not/16", "good/6", "good/6"}), run(filter, {no, no, good(8), good(13)}));
  EXPECT_EQ((Out{"not/16", "!/1", "good/6"}), run(filter, {no, Token("!", 3, 3), good(5)}));
  // Only the one word behind the negation is marked.
  EXPECT_EQ((Out{"not/16", "not-very/1", "good/6"}), run(filter, {no, en("very", 4), good(9)}));
}

TEST(TokenFilterTest, UnreadableWordFileFailsConfig) {
  TempDir dir;
  const std::string missing = dir.file("missing");
  StdoutCapture capture;
  BasicEWordTokenFilter en;
  EXPECT_FALSE(en.config(*parse("<en_stopword_file>" + missing + "</en_stopword_file>")));
  BasicNgramTokenFilter ngram;
  EXPECT_FALSE(ngram.config(*parse("<ch_negation_word_file>" + missing + "</ch_negation_word_file>")));
  const Out lines = capture.lines();
  ASSERT_EQ(2u, lines.size());
  EXPECT_TRUE(isLogRecord(lines[0], "Warn", "101", "Failed to Load English Stopwords From" + missing)) << lines[0];
  EXPECT_TRUE(isLogRecord(lines[1], "Warn", "101", "Failed to Load Negation Words From" + missing)) << lines[1];
}

TEST(TokenFilterTest, FilterChainInsideAnAnalyzer) {
  TempDir dir;
  writeFile(dir.file("pos"), "good\n");
  writeFile(dir.file("neg"), "bad\n");
  writeFile(dir.file("negation"), "not\nnever\n");
  // Filters listed first see a token last: the English filter tags before
  // the negation filter looks.
  const std::string xml =
      "<tokenizers><item><identifier>basicTokenzier</identifier><param><encode>utf-8</encode>"
      "<token_filters><item><identifier>skipNegationFilter</identifier></item>"
      "<item><identifier>defaultEnFilter</identifier><param>"
      "<en_pos_senti_file>" + dir.file("pos") + "</en_pos_senti_file>"
      "<en_neg_senti_file>" + dir.file("neg") + "</en_neg_senti_file>"
      "<en_negation_word_file>" + dir.file("negation") + "</en_negation_word_file>"
      "</param></item></token_filters></param></item></tokenizers>";
  Analyzer analyzer;
  ASSERT_TRUE(analyzer.config(*parse(xml)));

  auto tokenize = [&analyzer](const std::string& text, bool isolated) {
    TokenBuffer buffer;
    EXPECT_TRUE(analyzer.doTokenize(text, buffer, isolated));
    Out out;
    AutoPtr<TokenBuffer::Iterator> it = buffer.iterator();
    for (Token t; it->hasNext();) {
      it->next(t);
      out.push_back(t.term + "/" + std::to_string(t.startOffset) + "/" + std::to_string(t.tag));
    }
    return out;
  };
  // The line feed closes the first scope; "never never" cancels out.
  EXPECT_EQ((Out{"am/2/1", "not/5/16", "NOT_good/9/8", "\n/13/1", "not/14/16", "NOT_bad/20/9", "idea/24/1",
                 ",/28/1", "never/30/16", "never/36/16", "bad/42/7"}),
            tokenize("I am NOT good\nnot a bad idea, never never bad", true));
  // Isolated, each text starts fresh; otherwise the open scope of one text
  // reaches into the next.
  tokenize("so not", true);
  EXPECT_EQ((Out{"good/0/6"}), tokenize("good", true));
  tokenize("so not", false);
  EXPECT_EQ((Out{"NOT_good/0/8"}), tokenize("good", false));
}
