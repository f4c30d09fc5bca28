#include <gtest/gtest.h>

#include <map>
#include <random>

#include "TestSupport.h"
#include "TokenStreams.h"
#include "analyzer/TrieDict.h"

using namespace vortm::analyzer;
using namespace vortm::testing;
using vortm::common::AutoPtr;

typedef TrieDict<unsigned int> Utf8Dict;
typedef TrieDict<unsigned short> GbkDict;

namespace {

// Longest match the slow way: every end tried at every start; unmatched
// characters gather into plain spans.
Stream naiveMatch(const std::map<std::string, unsigned short>& words, const std::string& lexerId,
                  const std::string& text) {
  std::vector<unsigned int> ref = forwardRefs(lexerId, text);
  Stream out;
  auto emit = [&](size_t from, size_t to, unsigned short value) {
    if (from < to)
      out.push_back(text.substr(from, to - from) + "/" + std::to_string(from) + "/" + std::to_string(to - 1) + "/" +
                    std::to_string(value >> 8) + "/" + std::to_string(value & 0xFF));
  };
  const unsigned short span = Token::TT_TEXT_SPAN << 8 | Token::TG_PLAIN;
  size_t pending = 0;
  for (size_t c = 0, best; c < text.size(); c = best) {
    unsigned short value = 0;
    best = c + ref[c];
    for (size_t e = best; e <= text.size(); e += ref[e]) {
      auto it = words.find(text.substr(c, e - c));
      if (it != words.end() && it->second != 0) best = e, value = it->second;
    }
    if (value) emit(pending, c, span), emit(c, best, value), pending = best;
  }
  emit(pending, text.size(), span);
  return out;
}

}  // namespace

TEST(TrieDictTest, InsertFindAndBranchGrowth) {
  // GBK 你好 (C4E3 BAC3) is the word: 你, a mere prefix, finds 0 and is not
  // contained; a word not in the tree finds 0xFFFF.
  GbkDict gbk("basicGBKLexer");
  EXPECT_TRUE(gbk.insert("\xC4\xE3\xBA\xC3", 0x0206));
  EXPECT_EQ(0x0206, gbk.find("\xC4\xE3\xBA\xC3"));
  EXPECT_EQ(0, gbk.find("\xC4\xE3"));
  EXPECT_FALSE(gbk.contain("\xC4\xE3"));
  EXPECT_EQ(0xFFFF, gbk.find("\xBA\xC3"));
  EXPECT_EQ(0xFFFF, gbk.find(""));
  EXPECT_TRUE(gbk.insert("", 5));

  // Three children stay in the vector; the fourth moves them all to the
  // hash table.
  Utf8Dict dict("basicUTF8Lexer");
  const char* words[] = {"中", "a", "é", "文"};
  for (int i = 0; i < 3; ++i) dict.insert(words[i], static_cast<unsigned short>(i + 1));
  EXPECT_EQ(3, dict.getRoot()->m_orderBranches.size());
  EXPECT_TRUE(dict.getRoot()->m_hashBranches.empty());
  dict.insert(words[3], 4);
  EXPECT_EQ(0, dict.getRoot()->m_orderBranches.size());
  EXPECT_EQ(4u, dict.getRoot()->m_hashBranches.entryCount());
  for (int i = 0; i < 4; ++i) EXPECT_EQ(i + 1, dict.find(words[i]));

  // A broken character fails the insert with a warning and leaves the
  // prefix without a value.
  StdoutCapture capture;
  EXPECT_FALSE(dict.insert("ab\xF0", 3));
  ASSERT_EQ(1u, capture.lines().size());
  EXPECT_TRUE(isLogRecord(capture.lines()[0], "Warn", "101", "Character Lexer Error"));
  EXPECT_EQ(0, dict.find("ab"));
}

TEST(TrieDictTest, MatchAgreesWithNaiveReferenceAndSurvivesSaveLoad) {
  const std::vector<std::string> alphabets[] = {{"a", "b", "é", "中", "文", "，"},
                                                {"a", "b", "\xC4\xE3", "\xBA\xC3", "\xA3\xAC"}};
  std::mt19937 rng(20261112);
  TempDir dir;
  for (int gbk = 0; gbk < 2; ++gbk) {
    const std::string lexer = gbk ? "basicGBKLexer" : "basicUTF8Lexer";
    auto newDict = [&] {
      return AutoPtr<Dict>(gbk ? static_cast<Dict*>(new GbkDict(lexer)) : new Utf8Dict(lexer), true);
    };
    auto randomString = [&](int maxChars) {
      std::string s;
      for (int n = 1 + static_cast<int>(rng() % maxChars); n > 0; --n)
        s += alphabets[gbk][rng() % alphabets[gbk].size()];
      return s;
    };
    for (int round = 0; round < 20; ++round) {
      AutoPtr<Dict> dict = newDict(), loaded = newDict();
      std::map<std::string, unsigned short> words;
      for (int w = 0; w < 25; ++w) {
        // Some words carry 0 and stand only as prefixes of others.
        std::string word = randomString(4);
        words[word] = (rng() % 5 == 0) ? 0 : static_cast<unsigned short>(1 + rng() % 0xFFFF);
        dict->insert(word, words[word]);
      }
      ASSERT_TRUE(dict->saveTo(dir.file("dict")) && loaded->loadFrom(dir.file("dict")));
      for (int t = 0; t < 10; ++t) {
        const std::string text = randomString(30);
        const Stream expected = naiveMatch(words, lexer, text);
        ASSERT_EQ(expected, matchText(*dict, lexer, text)) << text;
        ASSERT_EQ(expected, matchText(*loaded, lexer, text)) << text;
      }
    }
  }
}

TEST(TrieDictTest, FileFormat) {
  // Records of weight, child count, (character, child id)..., 0x0A; all
  // little-endian, characters 2 bytes wide in GBK and 4 in UTF-8.
  TempDir dir;
  GbkDict gbk("basicGBKLexer");
  ASSERT_TRUE(gbk.saveTo(dir.file("empty")));
  EXPECT_EQ(std::string("\0\0\0\0\0\0\x0A", 7), readFile(dir.file("empty")));
  gbk.insert("\xC4\xE3", 0x0206);
  ASSERT_TRUE(gbk.saveTo(dir.file("gbk")));
  EXPECT_EQ(std::string("\0\0\x01\0\0\0\xE3\xC4\x01\0\0\0\x0A" "\x06\x02\0\0\0\0\x0A", 20), readFile(dir.file("gbk")));
  Utf8Dict utf8("basicUTF8Lexer");
  utf8.insert("中", 1);
  ASSERT_TRUE(utf8.saveTo(dir.file("utf8")));
  EXPECT_EQ(std::string("\0\0\x01\0\0\0\xAD\xB8\xE4\0\x01\0\0\0\x0A" "\x01\0\0\0\0\0\x0A", 22),
            readFile(dir.file("utf8")));
}

TEST(TrieDictTest, BadFilesFailAndKeepTheTree) {
  TempDir dir;
  Utf8Dict source("basicUTF8Lexer");
  for (const char* w : {"中文", "中", "ab"}) source.insert(w, 0x0206);
  ASSERT_TRUE(source.saveTo(dir.file("good")));
  const std::string good = readFile(dir.file("good")), recoverError = "Recover TrieTree Error from ";
  Utf8Dict dict("basicUTF8Lexer");
  dict.insert("old", 9);
  auto expectFailure = [&](const std::string& bytes, const std::string& message) {
    writeFile(dir.file("bad"), bytes);
    StdoutCapture capture;
    EXPECT_FALSE(dict.loadFrom(dir.file("bad")));
    EXPECT_EQ(9, dict.find("old"));
    ASSERT_EQ(message.empty() ? 0u : 1u, capture.lines().size());
    if (!message.empty()) {
      EXPECT_TRUE(isLogRecord(capture.lines()[0], "Warn", "101", message + dir.file("bad")));
    }
  };
  // Every cut of a good file fails: inside a record silently, and where the
  // file seems to end (less than a weight left) because a child is missing.
  for (size_t cut = 0; cut < good.size(); ++cut) {
    size_t lastEnd = cut == 0 ? std::string::npos : good.rfind('\x0A', cut - 1);
    size_t recordStart = lastEnd == std::string::npos ? 0 : lastEnd + 1;
    expectFailure(good.substr(0, cut), cut - recordStart < 2 ? recoverError : "");
  }
  // A child id pointing back at its parent, beyond the last record, or named
  // twice; a child count far beyond the file.
  const std::string leaf("\0\0\0\0\0\0\x0A", 7);
  expectFailure(std::string("\0\0\x01\0\0\0a\0\0\0\0\0\0\0\x0A", 15) + leaf, recoverError);
  expectFailure(std::string("\0\0\x01\0\0\0a\0\0\0\x05\0\0\0\x0A", 15) + leaf, recoverError);
  expectFailure(std::string("\0\0\x02\0\0\0a\0\0\0\x01\0\0\0b\0\0\0\x01\0\0\0\x0A", 23) + leaf, recoverError);
  expectFailure(std::string("\0\0\xFF\xFF\xFF\xFF" "a\0\0\0\x01\0\0\0", 14), "");

  // A missing file names itself, in the same words for loading and saving;
  // loading adds the reason. Special files fail to load the same way.
  std::string missing = dir.file("no/such");
  StdoutCapture capture;
  EXPECT_FALSE(dict.loadFrom(missing) || dict.saveTo(missing));
  for (const char* special : {"/dev/zero", "/tmp"}) EXPECT_FALSE(dict.loadFrom(special));
  ASSERT_EQ(4u, capture.lines().size());
  const std::string text = "Unable to Open File" + missing + "for Loading TrieTree";
  EXPECT_TRUE(isLogRecord(capture.lines()[0], "Warn", "101", text + ": No such file or directory"));
  EXPECT_TRUE(isLogRecord(capture.lines()[1], "Warn", "101", text));
  EXPECT_TRUE(isLogRecord(capture.lines()[2], "Warn", "101",
                          "Unable to Open File/dev/zerofor Loading TrieTree: not a regular file"));
  EXPECT_TRUE(isLogRecord(capture.lines()[3], "Warn", "101", "Unable to Open File/tmpfor Loading TrieTree: is a directory"));
  // A good file replaces the old tree.
  EXPECT_TRUE(dict.loadFrom(dir.file("good")));
  EXPECT_EQ(0xFFFF, dict.find("old"));
  EXPECT_EQ(0x0206, dict.find("中文"));
}

TEST(TrieDictTest, ConcurrentMatchesAgree) {
  Utf8Dict dict("basicUTF8Lexer");
  for (const char* w : {"中文", "中文分词", "分词", "词典", "文本", "ab", "abc"}) dict.insert(w, 0x0206);
  std::string text;
  for (int i = 0; i < 200; ++i) text += "中文分词典x文本abcab，";
  const Stream expected = matchText(dict, "basicUTF8Lexer", text);
  onThreads(4, [&](int) {
    for (int k = 0; k < 20; ++k) EXPECT_EQ(expected, matchText(dict, "basicUTF8Lexer", text));
  });
}
