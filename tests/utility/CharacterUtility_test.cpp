#include <gtest/gtest.h>

#include <string>

#include "utility/GBKCharacterUtility.h"
#include "utility/UTF8CharacterUtility.h"

using vortm::utility::CharacterUtility;
using vortm::utility::GBKCharacterUtility;
using vortm::utility::UTF8CharacterUtility;

TEST(CharacterUtilityTest, WordCharacters) {
  // UTF-8: any multi-byte character outside the punctuation list.
  UTF8CharacterUtility u;
  EXPECT_TRUE(u.isChineseWordCharacter("\xE4\xB8\xAD"));   // 中
  EXPECT_TRUE(u.isChineseWordCharacter("\xC3\xA9"));       // é
  EXPECT_FALSE(u.isChineseWordCharacter("\xE3\x80\x81"));  // 、
  EXPECT_FALSE(u.isChineseWordCharacter("\xC2\xB7"));      // ·
  EXPECT_FALSE(u.isChineseWordCharacter("\xE2\x94\x81"));  // ━, the last entry
  EXPECT_FALSE(u.isChineseWordCharacter("\x80"));          // one byte only

  // GBK: lead byte in the hanzi rows.
  GBKCharacterUtility g;
  EXPECT_FALSE(g.isChineseWordCharacter("\xAF\xA1"));
  EXPECT_TRUE(g.isChineseWordCharacter("\xB0\xA1"));
  EXPECT_TRUE(g.isChineseWordCharacter("\xF7\xFE"));
  EXPECT_FALSE(g.isChineseWordCharacter("\xF8\xA1"));
  EXPECT_FALSE(g.isChineseWordCharacter("\xB0"));
}

// The same checks in both encodings, on 。，？“”.
TEST(CharacterUtilityTest, PunctuationPredicates) {
  GBKCharacterUtility g;
  UTF8CharacterUtility u8;
  struct Case {
    CharacterUtility* u;
    std::string period, comma, question, open, close;
  } cases[] = {
      {&g, "\xA1\xA3", "\xA3\xAC", "\xA3\xBF", "\xA1\xB0", "\xA1\xB1"},
      {&u8, "\xE3\x80\x82", "\xEF\xBC\x8C", "\xEF\xBC\x9F", "\xE2\x80\x9C", "\xE2\x80\x9D"},
  };
  for (Case& c : cases) {
    CharacterUtility& u = *c.u;
    // Sentence punctuation is clause punctuation too, not the reverse.
    EXPECT_TRUE(u.isChClausePunction(c.period));
    EXPECT_FALSE(u.isChSentencePunction(c.comma));
    EXPECT_TRUE(u.isChClausePunction(c.comma));
    // ？ is all three; ASCII ? is none.
    EXPECT_TRUE(u.isChSentencePunction(c.question) && u.isChClausePunction(c.question));
    EXPECT_TRUE(u.isChQuestionMark(c.question));
    EXPECT_FALSE(u.isChSentencePunction("?") || u.isChClausePunction("?") || u.isChQuestionMark("?"));
    EXPECT_TRUE(u.isChQuotationMarkBegin(c.open) && !u.isChQuotationMarkEnd(c.open));
    EXPECT_TRUE(u.isChQuotationMarkEnd(c.close) && !u.isChQuotationMarkBegin(c.close));
    EXPECT_FALSE(u.isChSentencePunction(c.period + "a"));  // exact match only
  }
}
