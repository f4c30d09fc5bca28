#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "utility/GBKCharacterUtility.h"
#include "utility/UTF8CharacterUtility.h"

using vortm::utility::CharacterUtility;

TEST(CharacterUtilityTest, WordCharactersAndPunctuation) {
  vortm::utility::GBKCharacterUtility g;
  vortm::utility::UTF8CharacterUtility u8;
  // UTF-8: any multi-byte character outside the punctuation list (中 é, not 、 · or its last entry ━).
  // GBK: a lead byte in the hanzi rows B0..F7. A lone byte is never a word character.
  const std::tuple<CharacterUtility*, std::string, bool> chars[] = {
      {&u8, "\xE4\xB8\xAD", true}, {&u8, "\xC3\xA9", true},  {&u8, "\xE3\x80\x81", false}, {&u8, "\xC2\xB7", false},
      {&u8, "\xE2\x94\x81", false}, {&u8, "\x80", false},    {&g, "\xAF\xA1", false},       {&g, "\xB0\xA1", true},
      {&g, "\xF7\xFE", true},       {&g, "\xF8\xA1", false}, {&g, "\xB0", false}};
  for (const auto& [u, ch, word] : chars) EXPECT_EQ(word, u->isChineseWordCharacter(ch)) << ch;

  // The same checks in both encodings, on 。，？“”.
  typedef std::string S;
  const std::tuple<CharacterUtility*, S, S, S, S, S> marks[] = {
      {&g, "\xA1\xA3", "\xA3\xAC", "\xA3\xBF", "\xA1\xB0", "\xA1\xB1"},
      {&u8, "\xE3\x80\x82", "\xEF\xBC\x8C", "\xEF\xBC\x9F", "\xE2\x80\x9C", "\xE2\x80\x9D"}};
  for (const auto& [u, stop, comma, ques, open, close] : marks) {
    // Sentence punctuation is clause punctuation too, not the reverse; ？ is all three, ASCII ? none.
    EXPECT_TRUE(u->isChSentencePunction(stop) && u->isChClausePunction(stop));
    EXPECT_TRUE(!u->isChSentencePunction(comma) && u->isChClausePunction(comma));
    EXPECT_TRUE(u->isChSentencePunction(ques) && u->isChClausePunction(ques) && u->isChQuestionMark(ques));
    EXPECT_FALSE(u->isChSentencePunction("?") || u->isChClausePunction("?") || u->isChQuestionMark("?"));
    EXPECT_TRUE(u->isChQuotationMarkBegin(open) && !u->isChQuotationMarkEnd(open));
    EXPECT_TRUE(u->isChQuotationMarkEnd(close) && !u->isChQuotationMarkBegin(close));
    EXPECT_FALSE(u->isChSentencePunction(stop + "a"));  // exact match only
  }
}
