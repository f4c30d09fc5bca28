#include <gtest/gtest.h>

#include "TestSupport.h"
#include "TokenStreams.h"
#include "analyzer/BasicEWordTokenFilter.h"
#include "analyzer/BasicNgramTokenFilter.h"
#include "analyzer/NegationTokenFilter.h"
#include "analyzer/SimpleEnNegationTokenFilter.h"
#include "analyzer/SkipNegationTokenFilter.h"

using namespace vortm::analyzer;
using namespace vortm::testing;
using vortm::common::AutoPtr;
using vortm::configure::Parameter;

namespace {

// Feeds the tokens in order; a kept token shows as "term/tag", a dropped one
// as "-".
Stream run(TokenFilter& filter, std::vector<Token> tokens) {
  Stream out;
  for (Token& t : tokens) out.push_back(filter.filter(t) ? "-" : t.term + "/" + std::to_string(t.tag));
  return out;
}

// Writes a word list into `dir` and returns the setting that names it.
std::string listSetting(const TempDir& dir, const std::string& key, const std::string& words) {
  writeFile(dir.file(key), words);
  return "<" + key + ">" + dir.file(key) + "</" + key + ">";
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
  const std::string files = listSetting(dir, "en_pos_senti_file", "good\nfine 0.5\n") +
                            listSetting(dir, "en_neg_senti_file", "bad\nfine\n") +
                            listSetting(dir, "en_stopword_file", "the\n") +
                            listSetting(dir, "en_negation_word_file", "not\n");
  const std::vector<Token> input = {en("a", 0),  en("ab", 2),  en("GOOD", 5), en("fine", 10),
                                    en("Not", 15), en("the", 19), en("Bad", 23), Token("X", 27, 27)};
  // One-byte words go; "fine" is on both lists and counts as positive; the
  // stop word stays, only tagged; a non-English token is left alone.
  BasicEWordTokenFilter filter;
  ASSERT_TRUE(filter.config(*parseXml(files)));
  EXPECT_EQ(Stream({"-", "ab/1", "good/6", "fine/6", "not/16", "the/17", "bad/7", "X/1"}), run(filter, input));
  // Without lower-casing the lower-case lists miss "GOOD"; a clone keeps
  // the flag and shares the lists.
  BasicEWordTokenFilter asIs;
  ASSERT_TRUE(asIs.config(*parseXml(files + "<to_lowcase>FALSE</to_lowcase>")));
  const Stream unfolded = {"-", "ab/1", "GOOD/1", "fine/6", "Not/1", "the/17", "Bad/1", "X/1"};
  EXPECT_EQ(unfolded, run(asIs, input));
  EXPECT_EQ(unfolded, run(*asIs.cloneIgnoringState(), input));
  // An unreadable list fails the configuration and names the file.
  StdoutCapture capture;
  EXPECT_FALSE(
      BasicEWordTokenFilter().config(*parseXml("<en_stopword_file>" + dir.file("no") + "</en_stopword_file>")));
  ASSERT_EQ(1u, capture.lines().size());
  EXPECT_TRUE(isLogRecord(capture.lines()[0], "Warn", "101", "Failed to Load English Stopwords From" + dir.file("no") +
                                                                  ": No such file or directory"));
}

TEST(TokenFilterTest, NegationScopes) {
  vortm::common::gfn_creatorRegister();
  const Token no = en("not", 0, Token::TG_EN_NEGATION), no9 = en("not", 9, Token::TG_EN_NEGATION);
  const struct {
    const char* filter;
    std::vector<Token> in;
    Stream out;
  } cases[] = {
      // The plain negation filter tracks scopes but never rewrites.
      {"negationFilter",
       {negation(0, 2), good(4), Token("hen", 9, 11, Token::TT_CH_WORD, Token::TG_DEGREE_10), negation(13, 15), bad(17),
        negation(21, 23), negation(24, 26), good(27)},
       {"bu/15", "good/6", "hen/10", "bu/15", "bad/7", "bu/15", "bu/15", "good/6"}},
      // Negation ending at byte 10: a positive word at 22 is still reached,
      // over a plain word, and the rewrite closes the scope; 23 is too far.
      {"skipNegationFilter", {negation(8, 10), Token("x", 15, 15), good(22), bad(27)},
       {"bu/15", "x/1", "NOT_good/8", "bad/7"}},
      {"skipNegationFilter", {negation(8, 10), good(23)}, {"bu/15", "good/6"}},
      // A negation ending at byte 0 counts as none seen.
      {"skipNegationFilter", {Token("n", 0, 0, Token::TT_SYMBOL, Token::TG_NEGATION), bad(2)}, {"n/15", "bad/7"}},
      // Two negations cancel, and the count stays at two: a third one within
      // reach makes it odd again.
      {"skipNegationFilter", {negation(3, 5), negation(6, 8), good(10), negation(15, 17), bad(19)},
       {"bu/15", "bu/15", "good/6", "bu/15", "NOT_bad/9"}},
      // Clause punctuation and line ends close the scope, a symbol does not;
      // English negations open one too.
      {"skipNegationFilter",
       {negation(3, 5), Token(",", 6, 6, Token::TT_CLAUSE_PUNC), good(7), negation(9, 11), Token("\"", 12, 12),
        good(13)},
       {"bu/15", ",/1", "good/6", "bu/15", "\"/1", "NOT_good/8"}},
      {"skipNegationFilter", {no, good(4), no9, Token("\n", 12, 12, Token::TT_NEWLINE), good(13)},
       {"not/16", "NOT_good/8", "not/16", "\n/1", "good/6"}},
      // The simple English filter marks the one word behind an odd run of
      // negations, whatever its tag; anything else closes the scope.
      {"simple_en_negationFilter", {no, good(4), good(9)}, {"not/16", "not-good/6", "good/6"}},
      {"simple_en_negationFilter", {no, no, good(8), good(13)}, {"not/16", "not/16", "good/6", "good/6"}},
      {"simple_en_negationFilter", {no, Token("!", 3, 3), good(5)}, {"not/16", "!/1", "good/6"}},
      {"simple_en_negationFilter", {no, en("very", 4), good(9)}, {"not/16", "not-very/1", "good/6"}},
  };
  for (const auto& c : cases) {
    AutoPtr<TokenFilter> filter(vortm::common::InstanceCreator<TokenFilter>::getCreation(c.filter), true);
    ASSERT_TRUE(filter && filter->config(Parameter()));
    EXPECT_EQ(c.out, run(*filter, c.in)) << c.filter;
  }

  // A negation listed as after-only does not open a scope. A clone shares
  // that list but not the open scope of the original.
  TempDir dir;
  SkipNegationTokenFilter afterOnly;
  ASSERT_TRUE(afterOnly.config(*parseXml(listSetting(dir, "after_only_degree_words_file", "bu\n"))));
  Token mei("mei", 3, 5, Token::TT_CH_WORD, Token::TG_NEGATION);
  EXPECT_EQ(Stream({"bu/15", "good/6", "mei/15"}), run(afterOnly, {negation(3, 5), good(7), mei}));
  AutoPtr<TokenFilter> clone = afterOnly.cloneIgnoringState();
  EXPECT_EQ(Stream({"good/6", "bu/15", "good/6"}), run(*clone, {good(7), negation(9, 11), good(13)}));
  EXPECT_EQ(Stream({"NOT_good/8"}), run(afterOnly, {good(7)}));
}

TEST(TokenFilterTest, NgramsInsideAndBehindANegationAreDropped) {
  TempDir dir;
  BasicNgramTokenFilter filter;
  ASSERT_TRUE(filter.config(*parseXml(listSetting(dir, "ch_negation_word_file", "\xE4\xB8\x8D\n"))));
  // Only n-grams are thinned: the word token at 7 stays.
  EXPECT_EQ(Stream({"g3/1", "\xE4\xB8\x8D/1", "g6/1", "-", "-", "-", "w/1", "g10/1"}),
            run(filter, {ngram(3), Token("\xE4\xB8\x8D", 6, 8, Token::TT_NGRAM), ngram(6), ngram(7), ngram(8),
                         ngram(9), Token("w", 7, 7), ngram(10)}));
  StdoutCapture capture;
  EXPECT_FALSE(BasicNgramTokenFilter().config(
      *parseXml("<ch_negation_word_file>" + dir.file("no") + "</ch_negation_word_file>")));
  ASSERT_EQ(1u, capture.lines().size());
  EXPECT_TRUE(isLogRecord(capture.lines()[0], "Warn", "101", "Failed to Load Negation Words From" + dir.file("no") +
                                                                  ": No such file or directory"));
}
