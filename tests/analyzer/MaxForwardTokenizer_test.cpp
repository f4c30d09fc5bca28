#include <gtest/gtest.h>

#include "TestSupport.h"
#include "TokenStreams.h"
#include "analyzer/TrieDict.h"
#include "analyzer/TrieDictMaxForwardTokenizer.h"

using namespace vortm::analyzer;
using namespace vortm::testing;
using vortm::common::AutoPtr;

namespace {

// A chain item of the dictionary tokenizer over a new UTF-8 dictionary file.
std::string dictItem(const TempDir& dir, const std::string& name, const std::string& word, unsigned short value) {
  TrieDict<unsigned int> dict("basicUTF8Lexer");
  dict.insert(word, value);
  EXPECT_TRUE(dict.saveTo(dir.file(name)));
  return chainItem("trieDictMaxForwardTokenzier",
                   "<encode>UTF-8</encode><dict_file>" + dir.file(name) + "</dict_file>");
}

}  // namespace

TEST(MaxForwardTokenizerTest, ChainOfTwoDictionariesAndConfigFailures) {
  TempDir dir;
  Analyzer analyzer;
  ASSERT_TRUE(analyzer.config(*parseXml("<tokenizers>" + dictItem(dir, "first", "中文", 0x0206) +
                                           dictItem(dir, "second", "分词", 0x0207) + "</tokenizers>")));
  // Words carry type and tag from the value; what the first leaves goes to
  // the second with its offset, and the rest stays a span.
  EXPECT_EQ(Stream({"中文/0/5/2/6", "分词/6/11/2/7", "的/12/14/3/1"}), analyze(analyzer, "中文分词的"));
  // insertWord packs (type << 8) | tag, which the match splits back.
  AutoPtr<Tokenizer> head = analyzer.getTokenizer();
  EXPECT_TRUE(head->insertUserWords({"的"}, Token::TT_CH_WORD, Token::TG_POSITIVE));
  EXPECT_EQ(Stream({"中文/0/5/2/6", "分词/6/11/2/7", "的/12/14/2/6"}), analyze(analyzer, "中文分词的"));
  // An empty text fails, as does a tokenizer never configured.
  unsigned int ref[1] = {1};
  TokenBuffer out;
  EXPECT_FALSE(head->doTokenizeInternal("a", ref, 0, out, 0));
  TrieDictMaxForwardTokenizer bare;
  EXPECT_FALSE(bare.doTokenizeInternal("a", ref, 1, out, 0));
  EXPECT_FALSE(bare.insertWord("a", Token::TT_CH_WORD, Token::TG_POSITIVE));
  StdoutCapture capture;
  // No "dict_file": false without a word.
  EXPECT_FALSE(bare.config(*parseXml("<encode>utf-8</encode>")));
  EXPECT_TRUE(capture.lines().empty());
  // A missing file: the dictionary's warning, then the tokenizer's.
  std::string missing = dir.file("absent.dict");
  EXPECT_FALSE(bare.config(*parseXml("<encode>gbk</encode><dict_file>" + missing + "</dict_file>")));
  Stream lines = capture.lines();
  ASSERT_EQ(2u, lines.size());
  EXPECT_TRUE(isLogRecord(lines[0], "Warn", "101", "Unable to Open File" + missing +
                                                            "for Loading TrieTree: No such file or directory"));
  EXPECT_TRUE(isLogRecord(lines[1], "Warn", "101", "Unable to Load TRIE Dict from File " + missing));
  EXPECT_FALSE(bare.getDict());
}

TEST(MaxForwardTokenizerTest, UserWordsAttachAndDetach) {
  TempDir dir;
  Analyzer analyzer;
  ASSERT_TRUE(analyzer.config(
      *parseXml("<tokenizers>" + dictItem(dir, "zh", "中文", 0x0206) + "</tokenizers><encode>UTF8</encode>")));
  Tokenizer* oldHead = analyzer.getTokenizer().get();
  const Stream before = analyze(analyzer, "中文好手机");
  // User words win over the chain; their value is type | tag in the low
  // byte, so TT_USER_WORD (4) with TG_TARGET (25) gives type 0, tag 29.
  ASSERT_TRUE(analyzer.attachUserWords({"文好", "手机"}, Token::TT_USER_WORD, Token::TG_TARGET));
  EXPECT_EQ(oldHead, analyzer.getTokenizer()->getPostTokenizer().get());
  EXPECT_EQ(analyzer.getTokenizer().get(), oldHead->getPreTokenizer().get());
  EXPECT_EQ(Stream({"中/0/2/3/1", "文好/3/8/0/29", "手机/9/14/0/29"}), analyze(analyzer, "中文好手机"));
  // Detaching gives back the old chain.
  analyzer.detachPreTokenizer();
  EXPECT_EQ(oldHead, analyzer.getTokenizer().get());
  EXPECT_FALSE(oldHead->getPreTokenizer());
  EXPECT_EQ(before, analyze(analyzer, "中文好手机"));

  // The encoding is compared as written: "Utf-8" is refused.
  Analyzer other;
  ASSERT_TRUE(other.config(*parseXml("<encode>Utf-8</encode>")));
  EXPECT_FALSE(other.attachUserWords({"x"}, Token::TT_USER_WORD, Token::TG_TARGET));
  EXPECT_FALSE(other.getTokenizer());
  // With no chain the user words alone make one; detaching would leave none,
  // and the assertion ends the process.
  ASSERT_TRUE(other.config(*parseXml("<encode>GBK</encode>")));
  ASSERT_TRUE(other.attachUserWords({"\xC4\xE3"}, Token::TT_USER_WORD, Token::TG_TARGET));
  EXPECT_EQ(Stream({"\xC4\xE3/0/1/0/29", "a/2/2/3/1"}), analyze(other, "\xC4\xE3" "a"));
  EXPECT_DEATH(other.detachPreTokenizer(), "postTokenizerPtr");
}
