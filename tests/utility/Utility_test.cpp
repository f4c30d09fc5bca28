#include "utility/Utility.h"

#include <gtest/gtest.h>

#include <ctime>
#include <set>
#include <string>
#include <vector>

#include "TestSupport.h"
#include "utility/CharIterator.h"
#include "utility/StrTokenizer.h"

using vortm::testing::TempDir;
using vortm::testing::writeFile;
using vortm::utility::Utility;
typedef std::vector<std::string> Strings;

TEST(UtilityTest, StringEditing) {
  std::string s = " \t\r\n ";
  Utility::trim(s);
  EXPECT_EQ(s, "");
  s = "\r\n a b \t";
  Utility::trim(s);
  EXPECT_EQ(s, "a b");

  s = "AbC\xC4\xE3";
  Utility::toLowcase(s);
  EXPECT_EQ(s, "abc\xC4\xE3");

  // A replacement containing what it replaces must not loop.
  s = "a.b.c";
  Utility::replaceAll(s, ".", "..");
  EXPECT_EQ(s, "a..b..c");
  Utility::replaceAll(s, "", "x");
  EXPECT_EQ(s, "a..b..c");

  // Erasing closes up new occurrences, which go too.
  s = "aabb";
  Utility::eraseAll(s, "ab");
  EXPECT_EQ(s, "");
  s = "xabyab";
  Utility::eraseAll(s, "ab");
  EXPECT_EQ(s, "xy");

  s = "abc";
  EXPECT_TRUE(Utility::isAllDigit(s));
  EXPECT_TRUE(Utility::isAllEngLett("-"));
  EXPECT_TRUE(Utility::isAllEngLett(""));
  EXPECT_TRUE(Utility::isAllEngLett("Well-known"));
  EXPECT_FALSE(Utility::isAllEngLett("don't"));
  EXPECT_FALSE(Utility::isEnWord("-", 1));
  EXPECT_TRUE(Utility::isEnWord("don't", 5));
  EXPECT_FALSE(Utility::isEnWord("abc", 0));
  EXPECT_FALSE(Utility::isEnWord("ab1", 3));

  EXPECT_EQ(Utility::chCharToHexStr(""), "0x0}\n");
  EXPECT_EQ(Utility::chCharToHexStr("a\xC4"), "0x61,  0xC4,  0x0}\n");

  std::pair<std::string, double> low("a", 0.1), high("b", 0.9);
  EXPECT_TRUE(Utility::strFltPairCmp(high, low));
  EXPECT_FALSE(Utility::strFltPairCmp(low, high));
}

TEST(UtilityTest, Splitting) {
  Strings out = {"stale"};
  Utility::strTokenize("a||b|", "|", out);
  EXPECT_EQ(out, Strings({"a", "", "b"}));
  Utility::strTokenize("k::v::w", "::", out);
  EXPECT_EQ(out, Strings({"k", "v", "w"}));

  out = {"kept"};
  Utility::strTokenize("a, b", out, ',');
  EXPECT_EQ(out, Strings({"kept", "a", "b"}));
  out.clear();
  Utility::strTokenize("\tx;;y \r\n", out, ';');
  EXPECT_EQ(out, Strings({"x", "y"}));

  std::string text = "  one\t two  ", seps = " \t";
  vortm::utility::strtokenizer tok(text, seps);
  EXPECT_EQ(tok.count_tokens(), 2);
  EXPECT_EQ(tok.next_token(), "one");
  EXPECT_EQ(tok.next_token(), "two");
  EXPECT_EQ(tok.next_token(), "");
  EXPECT_EQ(tok.token(1), "two");
  EXPECT_EQ(tok.token(2), "");
  EXPECT_EQ(tok.token(-1), "");
  tok.start_scan();
  EXPECT_EQ(tok.next_token(), "one");
}

TEST(UtilityTest, Base64) {
  EXPECT_EQ(Utility::encrypt("Man"), "TWFu");
  EXPECT_EQ(Utility::encrypt("Ma"), "TWE=");
  EXPECT_EQ(Utility::encrypt("M"), "TQ==");
  EXPECT_EQ(Utility::encrypt(""), "");
  EXPECT_EQ(Utility::decrypt("TWE="), "Ma");
  EXPECT_EQ(Utility::decrypt(""), "");

  std::string plain;
  for (int i = 0; i < 100; ++i) plain.push_back(static_cast<char>(i * 7 + 200));
  std::string coded = Utility::encrypt(plain);
  ASSERT_EQ(coded.size(), 136u + 2);
  EXPECT_EQ(coded.substr(76, 2), "\r\n");
  EXPECT_EQ(coded.find('\r', 78), std::string::npos);
  EXPECT_EQ(Utility::decrypt(coded), plain);

  // Full groups filling the line still end with a break; decoding skips it.
  std::string exact(57, 'q');
  EXPECT_EQ(Utility::encrypt(exact).substr(76), "\r\n");
  EXPECT_EQ(Utility::decrypt(Utility::encrypt(exact)), exact);
}

TEST(UtilityTest, LoadWords) {
  TempDir dir;
  std::string path = dir.file("words.txt");
  writeFile(path, "good 1.0 extra\r\n   \t\n\nbad\t-1\ngood\nlast");

  Strings words;
  EXPECT_TRUE(Utility::loadWords(path, words, -1));
  EXPECT_EQ(words, Strings({"good", "bad", "good", "last"}));

  words.clear();
  EXPECT_TRUE(Utility::loadWords(path, words, 2));
  EXPECT_EQ(words, Strings({"good", "bad"}));

  std::set<std::string> unique;
  EXPECT_TRUE(Utility::loadWords(path, unique, -1));
  EXPECT_EQ(unique, std::set<std::string>({"bad", "good", "last"}));

  writeFile(dir.file("empty.txt"), "");
  words.clear();
  EXPECT_TRUE(Utility::loadWords(dir.file("empty.txt"), words, -1));
  EXPECT_TRUE(words.empty());
  EXPECT_FALSE(Utility::loadWords(dir.file("missing.txt"), words, -1));
}

TEST(UtilityTest, CharIterators) {
  vortm::utility::CharIteratorText text;
  text.setText(" a\r\n\tb ");
  char c;
  EXPECT_TRUE(text.nextCharNonWhitespace(c));
  EXPECT_EQ(c, 'a');
  EXPECT_TRUE(text.nextChar(c));
  EXPECT_EQ(c, '\r');
  EXPECT_TRUE(text.nextCharNonWhitespace(c));
  EXPECT_EQ(c, 'b');
  EXPECT_FALSE(text.nextCharNonWhitespace(c));

  // A new text replaces the rest of the old one, whatever its size.
  std::string big(2000000, 'x');
  text.setText(big);
  text.setText("z", 1);
  EXPECT_TRUE(text.nextChar(c));
  EXPECT_EQ(c, 'z');
  EXPECT_FALSE(text.nextChar(c));
  text.setText(nullptr, 5);
  EXPECT_FALSE(text.nextChar(c));

  TempDir dir;
  writeFile(dir.file("in.xml"), " <x/>");
  vortm::utility::CharIteratorFile file;
  EXPECT_FALSE(file.setFile(dir.file("missing.xml")));
  EXPECT_FALSE(file.nextChar(c));
  EXPECT_TRUE(file.setFile(dir.file("in.xml")));
  std::string got;
  while (file.nextCharNonWhitespace(c)) got.push_back(c);
  EXPECT_EQ(got, "<x/>");
}

TEST(UtilityTest, TimeFormats) {
  struct tm local = {};
  local.tm_year = 2020 - 1900;
  local.tm_mon = 2;
  local.tm_mday = 4;
  local.tm_hour = 5;
  local.tm_min = 6;
  local.tm_sec = 7;
  local.tm_isdst = -1;
  long stamp = static_cast<long>(mktime(&local));
  EXPECT_EQ(Utility::getFormatedTime(stamp), "2020-03-04 05:06:07");
  EXPECT_EQ(Utility::getFormatedDate(stamp), "2020-03-04");
  long now = static_cast<long>(time(nullptr));
  long later = Utility::getTime(1, 2, 3, 4);
  EXPECT_GE(later - now, 86400 + 7200 + 180 + 4);
  EXPECT_LE(later - now, 86400 + 7200 + 180 + 4 + 2);
}
