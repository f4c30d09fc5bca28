#include <gtest/gtest.h>

#include <map>
#include <random>

#include "TokenStreams.h"
#include "analyzer/BasicTokenizer.h"
#include "analyzer/BasicWeiboTokenizer.h"
#include "analyzer/ChNGramTokenizer.h"
#include "analyzer/GBKCharacterLexer.h"
#include "analyzer/SentenceTokenizer.h"
#include "analyzer/UTF8CharacterLexer.h"

using namespace vortm::analyzer;
using namespace vortm::testing;

namespace {

// Runs one tokenizer, configured in code, alone over the text.
Stream run(Tokenizer& tokenizer, const std::string& encode, const std::string& text, unsigned int base = 0) {
  std::map<std::string, std::string> param = {{"encode", encode}};
  EXPECT_TRUE(tokenizer.config(param));
  TokenBuffer out;
  EXPECT_TRUE(tokenizer.doTokenize(text, out, false, base));
  return tokenStream(out);
}

}  // namespace

TEST(BasicTokenizerTest, Classes) {
  BasicTokenizer t;
  // Blanks dropped; digits stand alone; hyphens belong to words; every
  // punctuation class; "\r" makes nothing; a run at the very end stops at the
  // last byte.
  EXPECT_EQ(Stream({"3/0/0/1/1", "D/1/1/14/1", "wi-fi/3/7/14/1", "，/8/10/10/1", "“/11/13/11/1", "好/14/16/6/1",
                    "”/17/19/12/1", "？/20/22/13/1", "?/23/23/13/1", "！/24/26/9/1", "\n/28/28/19/1",
                    "\n/29/29/19/1", "'/30/30/14/1"}),
            run(t, "utf-8", "3D wi-fi，“好”？?！\r\n\n'"));
  // GBK 你，“好”？。ａ and a lone lead byte: full-width "ａ" lies below the
  // hanzi rows and the truncated byte stands alone, both symbols.
  EXPECT_EQ(Stream({"\xC4\xE3/0/1/6/1", "\xA3\xAC/2/3/10/1", "\xA1\xB0/4/5/11/1", "\xBA\xC3/6/7/6/1",
                    "\xA1\xB1/8/9/12/1", "\xA3\xBF/10/11/13/1", "\xA1\xA3/12/13/9/1", "\xA3\xE1/14/15/1/1",
                    "\xC4/16/16/1/1"}),
            run(t, "gbk", "\xC4\xE3\xA3\xAC\xA1\xB0\xBA\xC3\xA1\xB1\xA3\xBF\xA1\xA3\xA3\xE1\xC4"));
}

// Lexers of a derived type are run through their interface, while the
// library's own are run inline over the bytes; both must cut every byte
// string alike, cut-off and four-byte sequences included.
TEST(BasicTokenizerTest, InlineLexingMatchesTheLexers) {
  struct SlowUTF8 : UTF8CharacterLexer {};
  struct SlowGBK : GBKCharacterLexer {};
  const unsigned char alphabet[] = {'a', 'Z', ' ', '?', '\n', 0x80, 0xA3, 0xBF, 0xC2, 0xB7, 0xE4, 0xBD,
                                    0xA0, 0xEF, 0xBC, 0x8C, 0xF0, 0x9F, 0xB0, 0xF7};
  std::mt19937 random(19);
  for (const std::string encode : {"utf-8", "gbk"}) {
    BasicTokenizer t;
    std::map<std::string, std::string> param = {{"encode", encode}};
    ASSERT_TRUE(t.config(param));
    for (int round = 0; round < 300; ++round) {
      std::string text(1 + random() % 24, ' ');
      for (char& c : text) c = static_cast<char>(alphabet[random() % sizeof(alphabet)]);
      TokenBuffer inline_, slow;
      ASSERT_TRUE(t.doTokenize(text, inline_, false, 5));
      vortm::common::AutoPtr<CharacterLexer> lexer(
          encode == "gbk" ? static_cast<CharacterLexer*>(new SlowGBK()) : new SlowUTF8(), true);
      ASSERT_TRUE(t.doTokenize(text, lexer, slow, 5));
      ASSERT_EQ(tokenStream(slow), tokenStream(inline_)) << encode << " round " << round;
    }
  }
}

TEST(BasicWeiboTokenizerTest, TopicsAndMentions) {
  BasicWeiboTokenizer t;
  const struct {
    std::string text;
    unsigned int base;
    Stream expected;
  } cases[] = {
      // A topic keeps both marks; every text ends in a mention, empty here.
      {"#话题#", 0, {"#话题#/0/7/20/1", "/8/7/21/1"}},
      // The colon ends the mention; the empty mention comes before the last run.
      {"@user: hi", 10, {"@user/10/14/21/1", "/19/18/21/1", "hi/17/18/14/1"}},
      // "@" both ends a mention and opens the next; ")" ends one too.
      {"@a@b", 0, {"@a/0/1/21/1", "@b/2/3/21/1"}},
      {"ok #t# @b)z", 0, {"ok/0/1/14/1", "#t#/3/5/20/1", "@b/7/8/21/1", "/11/10/21/1", "z/10/10/14/1"}},
      // A mark ends the Chinese run before it; an unclosed topic is a mention.
      {"好#x y", 0, {"好/0/2/6/1", "#x y/3/6/21/1"}},
  };
  for (const auto& c : cases) EXPECT_EQ(c.expected, run(t, "utf-8", c.text, c.base)) << c.text;
  // An empty text: true here, false for the plain tokenizer.
  unsigned int refs[1] = {1};
  TokenBuffer out;
  EXPECT_TRUE(t.doTokenizeInternal("", refs, 0, out, 0));
  BasicTokenizer basic;
  run(basic, "utf-8", "x");
  EXPECT_FALSE(basic.doTokenizeInternal("", refs, 0, out, 0));
}

TEST(ChNGramTokenizerTest, CountsAndLimits) {
  auto ngrams = [](const std::string& settings, const std::string& text) {
    ChNGramTokenizer t;
    EXPECT_TRUE(t.config(*parseXml("<encode>utf-8</encode>" + settings)));
    TokenBuffer out;
    EXPECT_TRUE(t.doTokenize(text, out, false, 0));
    return tokenStream(out);
  };
  // Shortest first from each start; five grams on three characters.
  EXPECT_EQ(Stream({"中/0/2/8/1", "中文/0/5/8/1", "文/3/5/8/1", "文字/3/8/8/1", "字/6/8/8/1"}),
            ngrams("<max_n type=\"int\">2</max_n>", "中文字"));
  // Only the max_n-grams; starts too near the end give none.
  EXPECT_EQ(Stream({"中文/0/5/8/1", "文字/3/8/8/1"}),
            ngrams("<max_n type=\"int\">2</max_n><is_n_finite>true</is_n_finite>", "中文字"));
  // Values outside 1 to 6 fall back to 4: 14 grams on five characters, not 15.
  for (const auto& c : std::map<int, size_t>{{0, 14}, {6, 15}, {7, 14}})
    EXPECT_EQ(c.second, ngrams("<max_n type=\"int\">" + std::to_string(c.first) + "</max_n>", "abcde").size());
  // Only the exact text "true" counts: all 4+3+2+1 grams here.
  EXPECT_EQ(10u, ngrams("<is_n_finite>TRUE</is_n_finite>", "abcd").size());
}

TEST(SentenceTokenizerTest, Spans) {
  SentenceTokenizer t;
  // Chinese clause and sentence marks, "\n" and "?" cut; the next span
  // starts just behind the delimiter. ASCII ",.!" do not cut.
  EXPECT_EQ(Stream({"你好/0/5/3/1", "世界/9/14/3/1", "a,b.c!d/20/26/3/1"}),
            run(t, "utf-8", "你好，世界。\n?a,b.c!d"));
  EXPECT_EQ(Stream(), run(t, "utf-8", "，。\n?？"));
  // GBK "你好，世界"
  EXPECT_EQ(Stream({"\xC4\xE3\xBA\xC3/5/8/3/1", "\xCA\xC0\xBD\xE7/11/14/3/1"}),
            run(t, "gbk", "\xC4\xE3\xBA\xC3\xA3\xAC\xCA\xC0\xBD\xE7", 5));
}
