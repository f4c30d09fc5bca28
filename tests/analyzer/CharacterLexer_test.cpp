#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "analyzer/GBKCharacterLexer.h"
#include "analyzer/UTF8CharacterLexer.h"

using namespace vortm::analyzer;
using namespace vortm::common;

namespace {

typedef std::vector<std::pair<unsigned int, unsigned int> > Spans;  // offset, length

// Lexes to the end; returns the characters and stores the final result.
Spans lexAll(CharacterLexer& lexer, const std::string& text, int& last) {
  lexer.setText(text);
  Spans out;
  unsigned int offset = 99, length = 99;
  while ((last = lexer.doLexer(offset, length)) == 1) out.push_back(std::make_pair(offset, length));
  return out;
}

}  // namespace

TEST(CharacterLexerTest, GBK) {
  GBKCharacterLexer lexer;
  unsigned int offset = 99, length = 99;
  int last;
  EXPECT_EQ(-1, lexer.doLexer(offset, length));  // no text yet

  // "a中，1"
  EXPECT_EQ(Spans({{0, 1}, {1, 2}, {3, 2}, {5, 1}}), lexAll(lexer, "a\xD6\xD0\xA3\xAC" "1", last));
  EXPECT_EQ(0, last);
  // The trail byte is not examined, even when it is ASCII.
  EXPECT_EQ(Spans({{0, 2}, {2, 1}}), lexAll(lexer, "\x81" "ab", last));
  // A lone lead byte at the end fails on that character.
  EXPECT_EQ(Spans({{0, 1}}), lexAll(lexer, "a\xD6", last));
  EXPECT_EQ(-1, last);

  // Empty text: end at once, at offset 0, length untouched.
  lexer.setText("");
  EXPECT_EQ(0, lexer.doLexer(offset, length));
  EXPECT_EQ(0u, offset);
  EXPECT_EQ(99u, length);
}

TEST(CharacterLexerTest, UTF8) {
  UTF8CharacterLexer lexer;
  unsigned int offset = 99, length = 99;
  int last;
  EXPECT_EQ(-1, lexer.doLexer(offset, length));

  // "aé中" and a stray continuation byte 0x80 alone.
  EXPECT_EQ(Spans({{0, 1}, {1, 2}, {3, 3}, {6, 1}}), lexAll(lexer, "a\xC3\xA9\xE4\xB8\xAD\x80", last));
  EXPECT_EQ(0, last);
  // Continuation bytes are taken unchecked.
  EXPECT_EQ(Spans({{0, 3}, {3, 1}}), lexAll(lexer, "\xE4" "abc", last));
  // A three-byte sequence cut after its second byte.
  EXPECT_EQ(Spans({{0, 1}}), lexAll(lexer, "a\xE4\xB8", last));
  EXPECT_EQ(-1, last);

  // A four-byte lead fails at once: offset set, length not, lead consumed.
  lexer.setText("\xF0\x9F\x98\x80");
  EXPECT_EQ(-1, lexer.doLexer(offset, length));
  EXPECT_EQ(0u, offset);
  EXPECT_EQ(99u, length);
  ASSERT_EQ(1, lexer.doLexer(offset, length));
  EXPECT_EQ(1u, offset);
}

TEST(CharacterLexerTest, CreatorsBuildLexersByIdentifier) {
  Singleton<InstanceCreatorHelper<GBKCharacterLexerCreator>, LazyInstantiation, FastMutex>::instance();
  Singleton<InstanceCreatorHelper<UTF8CharacterLexerCreator>, LazyInstantiation, FastMutex>::instance();
  AutoPtr<CharacterLexer> gbk(InstanceCreator<CharacterLexer>::getCreation("basicGBKLexer"), true);
  AutoPtr<CharacterLexer> utf8(InstanceCreator<CharacterLexer>::getCreation("basicUTF8Lexer"), true);
  EXPECT_NE(nullptr, dynamic_cast<GBKCharacterLexer*>(gbk.get()));
  EXPECT_NE(nullptr, dynamic_cast<UTF8CharacterLexer*>(utf8.get()));
  EXPECT_EQ(nullptr, InstanceCreator<CharacterLexer>::getCreation("basicLexer"));
}
