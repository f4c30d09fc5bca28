#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "TokenStreams.h"
#include "analyzer/BasicTokenizer.h"
#include "analyzer/BasicWeiboTokenizer.h"
#include "analyzer/ChNGramTokenizer.h"
#include "analyzer/SentenceTokenizer.h"

using namespace vortm::analyzer;
using vortm::common::AutoPtr;
using vortm::configure::Parameter;
using vortm::testing::parseConfig;
using vortm::testing::tokenStream;

typedef std::vector<std::string> Stream;

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

TEST(BasicTokenizerTest, UTF8) {
  BasicTokenizer t;
  // Blank dropped; offsets move with the base.
  EXPECT_EQ(Stream({"Hi/100/101/14/1", "你好/103/108/6/1", "!/109/109/1/1"}), run(t, "utf-8", "Hi 你好!", 100));
  // Digits stand alone; hyphens belong to words; every punctuation class;
  // "\r" makes nothing; a run at the very end stops at the last byte.
  EXPECT_EQ(Stream({"3/0/0/1/1", "D/1/1/14/1", "wi-fi/3/7/14/1", "，/8/10/10/1", "“/11/13/11/1", "好/14/16/6/1",
                    "”/17/19/12/1", "？/20/22/13/1", "?/23/23/13/1", "！/24/26/9/1", "\n/28/28/19/1",
                    "\n/29/29/19/1", "'/30/30/14/1"}),
            run(t, "utf-8", "3D wi-fi，“好”？?！\r\n\n'"));
}

TEST(BasicTokenizerTest, GBK) {
  BasicTokenizer t;
  // "Hi 你好!"
  EXPECT_EQ(Stream({"Hi/0/1/14/1", "\xC4\xE3\xBA\xC3/3/6/6/1", "!/7/7/1/1"}), run(t, "GBK", "Hi \xC4\xE3\xBA\xC3!"));
  // 你，“好”？。ａ and a lone lead byte: full-width "ａ" lies below the
  // hanzi rows and the truncated byte stands alone, both symbols.
  EXPECT_EQ(Stream({"\xC4\xE3/0/1/6/1", "\xA3\xAC/2/3/10/1", "\xA1\xB0/4/5/11/1", "\xBA\xC3/6/7/6/1",
                    "\xA1\xB1/8/9/12/1", "\xA3\xBF/10/11/13/1", "\xA1\xA3/12/13/9/1", "\xA3\xE1/14/15/1/1",
                    "\xC4/16/16/1/1"}),
            run(t, "gbk", "\xC4\xE3\xA3\xAC\xA1\xB0\xBA\xC3\xA1\xB1\xA3\xBF\xA1\xA3\xA3\xE1\xC4"));
}

TEST(BasicWeiboTokenizerTest, TopicsAndMentions) {
  BasicWeiboTokenizer t;
  // A topic keeps both marks; every text ends in a mention, empty here.
  EXPECT_EQ(Stream({"#话题#/0/7/20/1", "/8/7/21/1"}), run(t, "utf-8", "#话题#"));
  // The colon ends the mention; the empty mention comes before the last run.
  EXPECT_EQ(Stream({"@user/10/14/21/1", "/19/18/21/1", "hi/17/18/14/1"}), run(t, "utf-8", "@user: hi", 10));
  // "@" both ends a mention and opens the next; ")" ends one too.
  EXPECT_EQ(Stream({"@a/0/1/21/1", "@b/2/3/21/1"}), run(t, "utf-8", "@a@b"));
  EXPECT_EQ(Stream({"ok/0/1/14/1", "#t#/3/5/20/1", "@b/7/8/21/1", "/11/10/21/1", "z/10/10/14/1"}),
            run(t, "utf-8", "ok #t# @b)z"));
  // A mark ends the Chinese run before it; an unclosed topic is a mention.
  EXPECT_EQ(Stream({"好/0/2/6/1", "#x y/3/6/21/1"}), run(t, "utf-8", "好#x y"));

  // An empty text: true here, false for the plain tokenizer.
  unsigned int refs[1] = {1};
  TokenBuffer out;
  EXPECT_TRUE(t.doTokenizeInternal("", refs, 0, out, 0));
  BasicTokenizer basic;
  run(basic, "utf-8", "x");
  EXPECT_FALSE(basic.doTokenizeInternal("", refs, 0, out, 0));
}

TEST(ChNGramTokenizerTest, CountsAndLimits) {
  auto ngrams = [](const std::string& settings, const std::string& text, int* maxN = nullptr) {
    AutoPtr<Parameter> root = parseConfig("<encode>utf-8</encode>" + settings);
    ChNGramTokenizer t;
    EXPECT_TRUE(t.config(*root));
    if (maxN) *maxN = t.getMaxN();
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
  // Out-of-range values fall back to 4; ASCII counts like any character.
  int maxN = 0;
  EXPECT_EQ(Stream({"a/0/0/8/1", "ab/0/1/8/1", "b/1/1/8/1"}), ngrams("<max_n type=\"int\">0</max_n>", "ab", &maxN));
  EXPECT_EQ(4, maxN);
  ngrams("<max_n type=\"int\">7</max_n>", "a", &maxN);
  EXPECT_EQ(4, maxN);
  ngrams("<max_n type=\"int\">6</max_n>", "a", &maxN);
  EXPECT_EQ(6, maxN);
  // Only the exact text "true" counts: all 4+3+2+1 grams here.
  EXPECT_EQ(10u, ngrams("<is_n_finite>TRUE</is_n_finite>", "abcd").size());
}

TEST(SentenceTokenizerTest, Spans) {
  SentenceTokenizer t;
  // Chinese clause and sentence marks, "\n" and "?" cut; the next span
  // starts just behind the delimiter. ASCII ",.!" do not cut.
  EXPECT_EQ(Stream({"你好/0/5/3/1", "世界/9/14/3/1", "a,b.c!d/20/26/3/1"}), run(t, "utf-8", "你好，世界。\n?a,b.c!d"));
  EXPECT_EQ(Stream(), run(t, "utf-8", "，。\n?？"));
  // GBK "你好，世界"
  EXPECT_EQ(Stream({"\xC4\xE3\xBA\xC3/5/8/3/1", "\xCA\xC0\xBD\xE7/11/14/3/1"}),
            run(t, "gbk", "\xC4\xE3\xBA\xC3\xA3\xAC\xCA\xC0\xBD\xE7", 5));
}
