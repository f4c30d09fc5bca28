#include "utility/Utility.h"

#include <gtest/gtest.h>

#include <ctime>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "TestSupport.h"
#include "utility/CharIterator.h"
#include "utility/StrTokenizer.h"

using namespace vortm::testing;
using vortm::utility::Utility;
typedef std::vector<std::string> Strings;

TEST(UtilityTest, StringEditingAndPredicates) {
  auto edit = [](std::string s, const std::function<void(std::string&)>& f) { f(s); return s; };
  EXPECT_EQ(edit(" \t\r\n ", Utility::trim), "");
  EXPECT_EQ(edit("\r\n a b \t", Utility::trim), "a b");
  EXPECT_EQ(edit("AbC\xC4\xE3", Utility::toLowcase), "abc\xC4\xE3");
  // Replacing must not loop on its own output or an empty pattern; erasing also takes what closing up creates.
  EXPECT_EQ(edit("a.b.c", [](std::string& s) { Utility::replaceAll(s, ".", ".."); }), "a..b..c");
  EXPECT_EQ(edit("a.b", [](std::string& s) { Utility::replaceAll(s, "", "x"); }), "a.b");
  EXPECT_EQ(edit("aabb", [](std::string& s) { Utility::eraseAll(s, "ab"); }), "");

  EXPECT_TRUE(Utility::isAllEngLett("") && Utility::isAllEngLett("Well-known"));
  EXPECT_FALSE(Utility::isAllEngLett("don't"));
  EXPECT_TRUE(Utility::isEnWord("don't", 5));
  EXPECT_FALSE(Utility::isEnWord("-", 1) || Utility::isEnWord("abc", 0) || Utility::isEnWord("ab1", 3));
  EXPECT_EQ(Utility::chCharToHexStr("a\xC4"), "0x61,  0xC4,  0x0}\n");
  EXPECT_TRUE(Utility::strFltPairCmp({"b", 0.9}, {"a", 0.1}) && !Utility::strFltPairCmp({"a", 0.1}, {"b", 0.9}));
}

TEST(UtilityTest, Splitting) {
  Strings out = {"stale"};
  Utility::strTokenize("a||b|", "|", out);
  EXPECT_EQ(out, Strings({"a", "", "b"}));
  Utility::strTokenize("k::v::w", "::", out);
  EXPECT_EQ(out, Strings({"k", "v", "w"}));
  // The one-character form appends trimmed, non-empty fields.
  out = {"kept"};
  Utility::strTokenize("a, b", out, ',');
  Utility::strTokenize("\tx;;y \r\n", out, ';');
  EXPECT_EQ(out, Strings({"kept", "a", "b", "x", "y"}));

  std::string text = "  one\t two  ", seps = " \t";
  vortm::utility::strtokenizer tok(text, seps);
  EXPECT_EQ(tok.count_tokens(), 2);
  EXPECT_EQ(tok.next_token(), "one");
  EXPECT_EQ(tok.next_token(), "two");
  EXPECT_EQ(tok.next_token(), "");
  EXPECT_EQ(tok.token(1) + tok.token(2) + tok.token(-1), "two");
}

TEST(UtilityTest, Base64) {
  const std::pair<std::string, std::string> known[] = {{"Man", "TWFu"}, {"Ma", "TWE="}, {"M", "TQ=="}, {"", ""}};
  for (const auto& k : known) {
    EXPECT_EQ(Utility::encrypt(k.first), k.second);
    EXPECT_EQ(Utility::decrypt(k.second), k.first);
  }
  // Lines break after 76 characters, a full last line included; decoding skips the breaks.
  std::string plain;
  for (int i = 0; i < 100; ++i) plain.push_back(static_cast<char>(i * 7 + 200));
  std::string coded = Utility::encrypt(plain);
  EXPECT_EQ(coded.size(), 136u + 2);
  EXPECT_EQ(coded.find("\r\n"), 76u);
  EXPECT_EQ(Utility::decrypt(coded), plain);
  EXPECT_EQ(Utility::encrypt(std::string(57, 'q')).substr(76), "\r\n");
}

TEST(UtilityTest, LoadWords) {
  TempDir dir;
  std::string path = dir.file("words.txt");
  writeFile(path, "good 1.0 extra\r\n   \t\n\nbad\t-1\ngood\nlast");
  writeFile(dir.file("empty.txt"), "");
  Strings words, firstTwo, none;
  std::set<std::string> unique;
  EXPECT_TRUE(Utility::loadWords(path, words, -1) && Utility::loadWords(path, firstTwo, 2) &&
              Utility::loadWords(path, unique, -1));
  EXPECT_EQ(words, Strings({"good", "bad", "good", "last"}));
  EXPECT_EQ(firstTwo, Strings({"good", "bad"}));
  EXPECT_EQ(unique, std::set<std::string>({"bad", "good", "last"}));
  EXPECT_TRUE(Utility::loadWords(dir.file("empty.txt"), none, -1) && none.empty());
  EXPECT_FALSE(Utility::loadWords(dir.file("missing.txt"), none, -1));
}

TEST(UtilityTest, CharIterators) {
  vortm::utility::CharIteratorText text;
  text.setText(" a\r\n\tb ");
  char c;
  EXPECT_TRUE(text.nextCharNonWhitespace(c) && c == 'a' && text.nextChar(c) && c == '\r');
  EXPECT_TRUE(text.nextCharNonWhitespace(c) && c == 'b' && !text.nextCharNonWhitespace(c));
  // A new text replaces the rest of the old one, whatever its size.
  text.setText(std::string(2000000, 'x'));
  text.setText("z", 1);
  EXPECT_TRUE(text.nextChar(c) && c == 'z' && !text.nextChar(c));
  text.setText(nullptr, 5);
  EXPECT_FALSE(text.nextChar(c));
}

TEST(UtilityTest, TimeFormats) {
  struct tm local = {};
  ASSERT_NE(strptime("2020-03-04 05:06:07", "%Y-%m-%d %H:%M:%S", &local), nullptr);
  local.tm_isdst = -1;
  long stamp = static_cast<long>(mktime(&local));
  EXPECT_EQ(Utility::getFormatedTime(stamp), "2020-03-04 05:06:07");
  EXPECT_EQ(Utility::getFormatedDate(stamp), "2020-03-04");
  long now = static_cast<long>(time(nullptr));
  long delta = Utility::getTime(1, 2, 3, 4) - now;
  EXPECT_TRUE(delta >= 93784 && delta <= 93786) << delta;
}
