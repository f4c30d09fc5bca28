#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "SavedBytes.h"
#include "TestSupport.h"
#include "modular/Vocabulary.h"
#include "trainset/LineDocReader.h"

using namespace vortm;
using namespace vortm::testing;
using analyzer::Token;
using modular::Vocabulary;
using modular::WordInfo;

namespace {

double base2Log(double x) { return std::log10(x) / std::log10(2.0); }

Token word(const std::string& term, Token::TType type = Token::TT_CH_WORD, Token::TTag tag = Token::TG_PLAIN) {
  return Token(term, 0, static_cast<int>(term.size()) - 1, type, tag);
}

// The ids of the words, -1 for those not in the vocabulary.
std::vector<int> ids(const Vocabulary& v, const std::vector<std::string>& words) {
  std::vector<int> out;
  for (const std::string& w : words) out.push_back(v.getWordId(w));
  return out;
}

}  // namespace

TEST(VocabularyTest, ReadsHandWrittenFileAndWritesTheSameBytes) {
  TempDir dir;
  SavedBytes b;
  b.u32(100).u32(3);
  b.word("5aW9", 3, 7);        // 好
  b.word("5beu", 1, 1);        // 差: a Chinese word with df 1 stays
  b.word("bW92aWU=", 30, 40);  // movie: English, df above 24, 5 bytes
  writeFile(dir.file("v"), b.bytes());

  Vocabulary v;
  ASSERT_TRUE(v.loadFrom(dir.file("v")));
  EXPECT_EQ(v.getDocCount(), 100u);
  ASSERT_EQ(v.size(), 3);
  EXPECT_EQ(ids(v, {"好", "差", "movie", "missing"}), (std::vector<int>{0, 1, 2, -1}));
  // df is stored before tf, and files add 1.0 to df in the idf
  EXPECT_EQ(v.getWordInfos()[0].df, 3u);
  EXPECT_EQ(v.getWordInfos()[0].tf, 7u);
  EXPECT_FLOAT_EQ(v.getWordInfos()[0].idf, static_cast<float>(base2Log(100.1 / 4.1)));

  ASSERT_TRUE(v.writeTo(dir.file("w")));
  EXPECT_EQ(readFile(dir.file("w")), b.bytes());

  // Merging an empty vocabulary recomputes idf without the extra 1.0, and
  // sorts the records, so the ids are stale until the next load.
  Vocabulary empty;
  v.merge(empty, 0);
  ASSERT_EQ(v.getWordInfos()[1].word, "好");
  EXPECT_FLOAT_EQ(v.getWordInfos()[1].idf, static_cast<float>(base2Log(100.1 / 3.1)));
  EXPECT_EQ(v.getWordInfos()[0].word, "movie");
  EXPECT_EQ(v.getWordId("好"), 0);
}

TEST(VocabularyTest, LoadFailuresAndMinDf) {
  TempDir dir;
  StdoutCapture capture;
  Vocabulary v;
  writeFile(dir.file("zero"), SavedBytes().u32(5).u32(0).bytes());
  EXPECT_FALSE(v.loadFrom(dir.file("zero")));
  writeFile(dir.file("dup"), SavedBytes().u32(5).u32(2).word("5aW9", 1, 1).word("5aW9", 2, 2).bytes());
  EXPECT_FALSE(v.loadFrom(dir.file("dup")));
  const std::string cut = SavedBytes().u32(5).u32(2).word("5aW9", 1, 1).bytes();
  writeFile(dir.file("cut"), cut.substr(0, cut.size() - 3));
  EXPECT_FALSE(v.loadFrom(dir.file("cut")));
  // A forged count runs into the end of the data, not into memory.
  writeFile(dir.file("forged"), SavedBytes().u32(5).u32(0x7fffffff).bytes());
  EXPECT_FALSE(v.loadFrom(dir.file("forged")));
  EXPECT_FALSE(v.loadFrom(dir.file("absent")));
  EXPECT_FALSE(v.writeTo(dir.file("no/such/dir")));
  std::vector<std::string> lines = capture.lines();
  ASSERT_EQ(lines.size(), 6u);
  EXPECT_TRUE(isLogRecord(lines[0], "Warn", "101", "Fail to Load Vocabulary from " + dir.file("zero")));
  EXPECT_TRUE(isLogRecord(lines[3], "Warn", "101", "Fail to Load Vocabulary from " + dir.file("forged")));
  EXPECT_TRUE(isLogRecord(lines[4], "Warn", "101", "Fail to Open File " + dir.file("absent") + " for Loading Vocabulary"));
  EXPECT_TRUE(
      isLogRecord(lines[5], "Warn", "101", "Fail to Open File " + dir.file("no/such/dir") + " for Writting Vocabulary"));

  // With minDf 5 a record of df 4 is skipped and the next takes its place;
  // wordCount keeps the count of the file.
  writeFile(dir.file("v"), SavedBytes().u32(50).u32(2).word("5aW9", 4, 4).word("5beu", 5, 5).bytes());
  Vocabulary filtered;
  filtered.setMinDf(5);
  ASSERT_TRUE(filtered.loadFrom(dir.file("v")));
  EXPECT_EQ(filtered.size(), 1);
  EXPECT_EQ(filtered.getWordId("差"), 0);
  EXPECT_EQ(filtered.getWordCount(), 2);
}

TEST(VocabularyTest, EnglishWordsAreDroppedAtSaving) {
  TempDir dir;
  Vocabulary v;
  v.setDocCount(1000);
  v.addUserWord("ab", 25, 25);                     // too short
  v.addUserWord("abc", 25, 25);                    // kept
  v.addUserWord("bad", 24, 24);                    // too rare
  v.addUserWord(std::string(21, 'a'), 25, 25);     // too long
  v.addUserWord("好", 1, 1);                       // not English: kept
  ASSERT_TRUE(v.writeTo(dir.file("v")));
  Vocabulary back;
  ASSERT_TRUE(back.loadFrom(dir.file("v")));
  EXPECT_EQ(back.size(), 2);
  EXPECT_EQ(ids(back, {"abc", "好"}), (std::vector<int>{0, 1}));
}

TEST(VocabularyTest, UserWordsMergeAndResize) {
  TempDir dir;
  writeFile(dir.file("v"), SavedBytes().u32(10).u32(1).word("5aW9", 2, 2).bytes());
  Vocabulary v;
  {
    // Enough words to regrow the look-up index of a loaded vocabulary; each
    // is found by string, by bytes and in a batch, a term up to a zero byte.
    Vocabulary grown;
    ASSERT_TRUE(grown.loadFrom(dir.file("v")));
    std::vector<std::string> many;
    for (int i = 0; i < 40; ++i) many.push_back("w" + std::to_string(i));
    for (const std::string& w : many) grown.addUserWord(w, 1, 1);
    std::vector<Vocabulary::WordPiece> pieces;
    for (const std::string& w : many) pieces.emplace_back(w.data(), w.size());
    pieces.emplace_back("w1x", 2);
    pieces.emplace_back("w40", 3);
    std::vector<int> ids;
    grown.getWordIds(pieces, ids);
    for (int i = 0; i < 40; ++i) EXPECT_EQ(ids[i], 1 + i) << many[i];
    EXPECT_EQ(ids[40], grown.getWordId("w1"));
    EXPECT_EQ(ids[41], -1);
    EXPECT_EQ(grown.getTermId(std::string("w7\0w8", 5)), grown.getWordId("w7"));
  }
  ASSERT_TRUE(v.loadFrom(dir.file("v")));
  v.addUserWord("x1", 1, 1);
  v.addUserWord("x2", 2, 2);
  v.addUserWord("x3", 3, 3);
  EXPECT_FLOAT_EQ(v.getWordInfos()[3].idf, static_cast<float>(base2Log(10.1 / 3.1)));
  v.deleteUserWord("好");  // from the file: stays
  EXPECT_EQ(v.getWordId("好"), 0);
  v.deleteUserWord("x1");
  EXPECT_EQ(v.size(), 3);
  EXPECT_EQ(ids(v, {"x1", "x2", "x3"}), (std::vector<int>{-1, 1, 2}));
  EXPECT_EQ(v.getWordInfos()[2].word, "x3");

  Vocabulary other;
  other.setDocCount(5);
  other.addUserWord("好", 1, 4);
  other.addUserWord("少见", 1, 1);
  other.addUserWord("常见", 9, 9);
  v.merge(other, 2);  // "少见" is new and below 2: skipped
  EXPECT_EQ(v.getDocCount(), 15u);
  EXPECT_EQ(v.size(), 4);
  EXPECT_EQ(v.getWordInfos()[0].word, "常见");  // sorted by falling df
  v.resize(2);
  ASSERT_EQ(v.size(), 2);
  EXPECT_EQ(ids(v, {"常见", "好"}), (std::vector<int>{0, 1}));  // 好: df 3 after the merge
  EXPECT_EQ(v.getWordInfos()[1].tf, 6u);
  v.resize(5);  // not below the size: nothing happens
  EXPECT_EQ(v.size(), 2);
}

TEST(VocabularyTest, ExcludeFilterAndBuild) {
  Token symbol = word("ab", Token::TT_SYMBOL);
  Token stop = word("的的", Token::TT_CH_WORD, Token::TG_STOPWORD);
  Token ch = word("好的");
  Token en = word("good", Token::TT_EN_WORD);
  Token enDigits = word("g00d", Token::TT_EN_WORD);
  Token enLong = word(std::string(51, 'a'), Token::TT_EN_WORD);
  std::vector<bool> excluded;
  for (Token* t : {&symbol, &stop, &ch, &en, &enDigits, &enLong}) excluded.push_back(analyzer::isExcludeForVocab(*t));
  EXPECT_EQ(excluded, (std::vector<bool>{true, true, false, false, true, true}));

  // One-byte tokens never count, whatever the filter says.
  Vocabulary v;
  std::unordered_map<std::string, unsigned int> ids;
  std::vector<Token> doc1 = {word("ab"), word("ab"), word("x"), word("cd")};
  std::vector<Token> doc2 = {word("cd")};
  v.addDocument(doc1, [](Token&) { return false; }, ids);
  v.addDocument(doc2, [](Token&) { return false; }, ids);
  v.sortByDf();
  ASSERT_EQ(v.size(), 2);
  EXPECT_EQ(v.getDocCount(), 2u);
  EXPECT_EQ(v.getWordInfos()[0].word, "cd");
  EXPECT_EQ(v.getWordInfos()[0].df, 2u);
  EXPECT_EQ(v.getWordInfos()[1].tf, 2u);
  EXPECT_EQ(v.getWordId("cd"), -1);  // ids are built only by loading or resizing

  // build() reads documents and tokenizes them with a configured analyzer.
  TempDir dir;
  writeFile(dir.file("corpus"), "good movie\nbad movie ok\n\n");
  writeFile(dir.file("analyzer.xml"),
            "<analyzer><tokenizers><t><identifier>basicTokenzier</identifier><param><encode>utf-8</encode>"
            "</param></t></tokenizers></analyzer>");
  Vocabulary built;
  ASSERT_TRUE(built.build(common::AutoPtr<trainset::DocReader>(new trainset::LineDocReader(dir.file("corpus")), true),
                          dir.file("analyzer.xml"), nullptr));
  EXPECT_EQ(built.getDocCount(), 3u);
  ASSERT_EQ(built.size(), 4);
  EXPECT_EQ(built.getWordInfos()[0].word, "movie");
  StdoutCapture capture;
  EXPECT_FALSE(built.build(common::AutoPtr<trainset::DocReader>(), dir.file("absent.xml"), nullptr));
  // The reader's own warning with the reason comes first.
  std::vector<std::string> lines = capture.lines();
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_TRUE(isLogRecord(lines[0], "Warn", "101",
                          "Unable to Read Config File " + dir.file("absent.xml") + ": No such file or directory"));
  EXPECT_EQ(std::vector<std::string>(lines.begin() + 1, lines.end()),
            std::vector<std::string>({"Failed to Parse Params", "Failed to init text analyzer"}));
}
