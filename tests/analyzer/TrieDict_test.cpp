#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "TestSupport.h"
#include "TokenStreams.h"
#include "analyzer/TrieDict.h"
#include "common/InstanceCreator.h"

using namespace vortm::analyzer;
using vortm::common::AutoPtr;
using vortm::testing::isLogRecord;
using vortm::testing::readFile;
using vortm::testing::StdoutCapture;
using vortm::testing::TempDir;

typedef std::vector<std::string> Stream;
typedef TrieDict<unsigned int> Utf8Dict;
typedef TrieDict<unsigned short> GbkDict;

namespace {

// Where the lexer starts each character, and the end of the text.
std::vector<unsigned int> bounds(const std::string& lexerId, const std::string& text) {
  AutoPtr<CharacterLexer> lexer(vortm::common::InstanceCreator<CharacterLexer>::getCreation(lexerId), true);
  lexer->setText(text);
  std::vector<unsigned int> out;
  unsigned int offset, length;
  while (lexer->doLexer(offset, length) == 1) out.push_back(offset);
  out.push_back(static_cast<unsigned int>(text.size()));
  return out;
}

Stream matchText(Dict& dict, const std::string& lexerId, const std::string& text) {
  std::vector<unsigned int> b = bounds(lexerId, text), ref(text.size() + 1, 1);
  for (size_t i = 0; i + 1 < b.size(); ++i) ref[b[i]] = b[i + 1] - b[i];
  TokenBuffer out;
  EXPECT_TRUE(dict.match(text.data(), static_cast<unsigned int>(text.size()), ref.data(), out, 0));
  return vortm::testing::tokenStream(out);
}

// Longest match the slow way: every end tried at every start.
Stream naiveMatch(const std::map<std::string, unsigned short>& words, const std::string& lexerId,
                  const std::string& text) {
  std::vector<unsigned int> b = bounds(lexerId, text);
  Stream out;
  auto emit = [&](size_t from, size_t to, int type, int tag) {
    out.push_back(text.substr(b[from], b[to] - b[from]) + "/" + std::to_string(b[from]) + "/" +
                  std::to_string(b[to] - 1) + "/" + std::to_string(type) + "/" + std::to_string(tag));
  };
  size_t pending = 0;
  for (size_t c = 0; c + 1 < b.size();) {
    size_t best = 0;
    unsigned short weight = 0;
    for (size_t e = c + 1; e < b.size(); ++e) {
      auto it = words.find(text.substr(b[c], b[e] - b[c]));
      if (it != words.end() && it->second != 0) best = e, weight = it->second;
    }
    if (!best) {
      ++c;
      continue;
    }
    if (pending < c) emit(pending, c, Token::TT_TEXT_SPAN, Token::TG_PLAIN);
    emit(c, best, weight >> 8, weight & 0xFF);
    c = pending = best;
  }
  if (pending + 1 < b.size()) emit(pending, b.size() - 1, Token::TT_TEXT_SPAN, Token::TG_PLAIN);
  return out;
}

}  // namespace

TEST(TrieDictTest, InsertFindContain) {
  // GBK: 你好 (C4E3 BAC3) is the word, 你 a mere prefix; a second insert wins.
  GbkDict gbk("basicGBKLexer");
  EXPECT_TRUE(gbk.insert("\xC4\xE3\xBA\xC3", 0x0206));
  EXPECT_TRUE(gbk.insert("\xC4\xE3\xBA\xC3", 0x0207));
  EXPECT_EQ(0x0207, gbk.find("\xC4\xE3\xBA\xC3"));
  EXPECT_EQ(0, gbk.find("\xC4\xE3"));
  EXPECT_FALSE(gbk.contain("\xC4\xE3"));
  EXPECT_EQ(0xFFFF, gbk.find("\xBA\xC3"));
  EXPECT_EQ(0xFFFF, gbk.find(""));
  EXPECT_TRUE(gbk.insert("", 5));

  // UTF-8: a word of value 0 is not contained; a broken character fails the
  // insert with a warning and leaves the prefix without a value.
  Utf8Dict utf8("basicUTF8Lexer");
  EXPECT_TRUE(utf8.insert("零", 0));
  EXPECT_FALSE(utf8.contain("零"));
  StdoutCapture capture;
  EXPECT_FALSE(utf8.insert("ab\xF0", 3));
  ASSERT_EQ(1u, capture.lines().size());
  EXPECT_TRUE(isLogRecord(capture.lines()[0], "Warn", "101", "Character Lexer Error"));
  EXPECT_EQ(0, utf8.find("ab"));
}

TEST(TrieDictTest, FourthChildMovesBranchesToHashTable) {
  Utf8Dict dict("basicUTF8Lexer");
  const char* words[] = {"中", "a", "é", "文"};
  Utf8Dict::TrieTreeNode* root = dict.getRoot();
  std::vector<Utf8Dict::TrieTreeNode::CharNodePair> pairs;
  for (int i = 0; i < 3; ++i) dict.insert(words[i], static_cast<unsigned short>(i + 1));
  // Three children stay in the vector and come out in character order.
  root->getAllCharNodePairs(pairs);
  ASSERT_EQ(3u, pairs.size());
  EXPECT_TRUE(root->m_hashBranches.empty());
  EXPECT_EQ(std::vector<unsigned int>({0x61u, 0xC3A9u, 0xE4B8ADu}),
            std::vector<unsigned int>({pairs[0].ch, pairs[1].ch, pairs[2].ch}));
  // The fourth moves all of them to the hash table.
  dict.insert(words[3], 4);
  EXPECT_EQ(0, root->m_orderBranches.size());
  EXPECT_EQ(4u, root->m_hashBranches.entryCount());
  for (int i = 0; i < 4; ++i) EXPECT_EQ(i + 1, dict.find(words[i]));
}

TEST(TrieDictTest, MatchAgreesWithNaiveReferenceAndSurvivesSaveLoad) {
  const std::vector<std::string> alphabets[] = {{"a", "b", "é", "中", "文", "，"},
                                                {"a", "b", "\xC4\xE3", "\xBA\xC3", "\xA3\xAC"}};
  std::mt19937 rng(20261112);
  TempDir dir;
  for (int gbk = 0; gbk < 2; ++gbk) {
    const std::string lexer = gbk ? "basicGBKLexer" : "basicUTF8Lexer";
    auto newDict = [&]() -> Dict* { return gbk ? static_cast<Dict*>(new GbkDict(lexer)) : new Utf8Dict(lexer); };
    auto randomString = [&](int maxChars) {
      std::string s;
      for (int n = 1 + static_cast<int>(rng() % maxChars); n > 0; --n) s += alphabets[gbk][rng() % alphabets[gbk].size()];
      return s;
    };
    for (int round = 0; round < 20; ++round) {
      AutoPtr<Dict> dict(newDict(), true), loaded(newDict(), true);
      std::map<std::string, unsigned short> words;
      for (int w = 0; w < 25; ++w) {
        // Some words carry 0 and stand only as prefixes of others.
        unsigned short weight = (rng() % 5 == 0) ? 0 : static_cast<unsigned short>(1 + rng() % 0xFFFF);
        std::string word = randomString(4);
        dict->insert(word, weight);
        words[word] = weight;
      }
      ASSERT_TRUE(dict->saveTo(dir.file("dict")));
      ASSERT_TRUE(loaded->loadFrom(dir.file("dict")));
      for (int t = 0; t < 10; ++t) {
        std::string text = randomString(30);
        Stream expected = naiveMatch(words, lexer, text);
        ASSERT_EQ(expected, matchText(*dict, lexer, text)) << text;
        ASSERT_EQ(expected, matchText(*loaded, lexer, text)) << text;
      }
    }
  }
}

TEST(TrieDictTest, FileFormat) {
  TempDir dir;
  // An empty dictionary is its root alone: weight 0, no children, 0x0A.
  GbkDict gbk("basicGBKLexer");
  ASSERT_TRUE(gbk.saveTo(dir.file("empty")));
  EXPECT_EQ(std::string("\0\0\0\0\0\0\x0A", 7), readFile(dir.file("empty")));
  // One word: the root names child 1 with its character (2 bytes in GBK,
  // 4 in UTF-8), the child carries the value; all little-endian.
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
  source.insert("中文", 0x0206);
  source.insert("中", 0x0101);
  source.insert("ab", 0x0303);
  ASSERT_TRUE(source.saveTo(dir.file("good")));
  const std::string good = readFile(dir.file("good"));

  Utf8Dict dict("basicUTF8Lexer");
  dict.insert("old", 9);
  const std::string recoverError = "Recover TrieTree Error from ";
  auto expectFailure = [&](const std::string& bytes, const std::string& message) {
    vortm::testing::writeFile(dir.file("bad"), bytes);
    StdoutCapture capture;
    EXPECT_FALSE(dict.loadFrom(dir.file("bad")));
    EXPECT_EQ(9, dict.find("old"));
    Stream lines = capture.lines();
    ASSERT_EQ(message.empty() ? 0u : 1u, lines.size());
    if (!message.empty()) {
      EXPECT_TRUE(isLogRecord(lines[0], "Warn", "101", message + dir.file("bad")));
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

  // A missing file names itself, for loading and, in the same words, saving.
  std::string missing = dir.file("no/such");
  StdoutCapture capture;
  EXPECT_FALSE(dict.loadFrom(missing));
  EXPECT_FALSE(dict.saveTo(missing));
  ASSERT_EQ(2u, capture.lines().size());
  for (const std::string& line : capture.lines())
    EXPECT_TRUE(isLogRecord(line, "Warn", "101", "Unable to Open File" + missing + "for Loading TrieTree"));
  // The good file replaces the old tree.
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
  std::vector<Stream> results(4);
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t)
    threads.emplace_back([&, t] {
      for (int k = 0; k < 20; ++k) results[t] = matchText(dict, "basicUTF8Lexer", text);
    });
  for (auto& th : threads) th.join();
  for (const Stream& r : results) EXPECT_EQ(expected, r);
}
