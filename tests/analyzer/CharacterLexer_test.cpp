#include <gtest/gtest.h>

#include <string>

#include "analyzer/GBKCharacterLexer.h"
#include "analyzer/UTF8CharacterLexer.h"

using namespace vortm::analyzer;

namespace {

// Lexes to the end: each call as "offset+length", prefixed by "!" on failure
// and "$" at the end; 99 marks a value the lexer never set.
std::string lexAll(CharacterLexer& lexer, const std::string& text) {
  lexer.setText(text);
  std::string out;
  unsigned int offset = 99, length = 99;
  for (size_t calls = 0; calls < text.size() + 2; ++calls) {
    int r = lexer.doLexer(offset, length);
    out += (r == 1 ? "" : r == 0 ? "$" : "!") + std::to_string(offset) + "+" + std::to_string(length);
    if (r == 0) break;
    out += " ";
  }
  return out;
}

}  // namespace

TEST(CharacterLexerTest, CharactersFailuresAndEnd) {
  GBKCharacterLexer gbk;
  UTF8CharacterLexer utf8;
  unsigned int offset, length;
  EXPECT_EQ(-1, gbk.doLexer(offset, length));  // no text yet
  EXPECT_EQ(-1, utf8.doLexer(offset, length));
  const struct {
    CharacterLexer* lexer;
    std::string text, expected;
  } cases[] = {
      {&gbk, "a\xD6\xD0\xA3\xAC" "1", "0+1 1+2 3+2 5+1 $6+1"},  // "a中，1"
      {&gbk, "\x81" "ab", "0+2 2+1 $3+1"},                      // the trail byte is not examined
      {&gbk, "a\xD6", "0+1 !1+1 $2+1"},                         // a lone lead byte at the end
      {&gbk, "", "$0+99"},
      {&utf8, "a\xC3\xA9\xE4\xB8\xAD\x80", "0+1 1+2 3+3 6+1 $7+1"},  // "aé中", a stray continuation byte
      {&utf8, "\xE4" "abc", "0+3 3+1 $4+1"},                         // continuation bytes unchecked
      {&utf8, "a\xE4\xB8", "0+1 !1+1 $3+1"},                         // a sequence cut short
      {&utf8, "\xF0\x9F\x98\x80", "!0+99 1+1 2+1 3+1 $4+1"},         // a four-byte lead fails alone
  };
  for (const auto& c : cases) EXPECT_EQ(c.expected, lexAll(*c.lexer, c.text)) << c.text;
}
