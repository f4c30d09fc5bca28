#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "analyzer/TokenBuffer.h"

using vortm::analyzer::Token;
using vortm::analyzer::TokenBuffer;
using vortm::analyzer::appendToken;

namespace {

// Each record as "term/start/end/type/tag".
std::vector<std::string> readAll(TokenBuffer& buffer) {
  std::vector<std::string> out;
  auto it = buffer.iterator();
  for (Token t; it->hasNext();) {
    it->next(t);
    out.push_back(t.term + "/" + std::to_string(t.startOffset) + "/" + std::to_string(t.endOffset) + "/" +
                  std::to_string(t.type) + "/" + std::to_string(t.tag));
  }
  return out;
}

}  // namespace

TEST(TokenBufferTest, RoundTripKeepsEveryField) {
  TokenBuffer buffer;
  EXPECT_FALSE(buffer.iterator()->hasNext());  // no records

  appendToken(buffer, Token("good", 0, 3, Token::TT_EN_WORD, Token::TG_POSITIVE));
  // Written straight from the text; the term holds a zero byte.
  const char text[] = "xxa\0bxx";
  appendToken(buffer, text + 2, 3, 2, 4, Token::TT_SYMBOL, Token::TG_PLAIN);
  // A default token, then numbers outside the named values.
  appendToken(buffer, Token());
  appendToken(buffer, Token("", 7, 7, static_cast<Token::TType>(255), static_cast<Token::TTag>(200)));

  const std::vector<std::string> expected = {"good/0/3/14/6", std::string("a\0b", 3) + "/2/4/1/1", "/-1/-1/1/1",
                                              "/7/7/255/200"};
  EXPECT_EQ(expected, readAll(buffer));

  // A record cut short at the end ends the iteration without a token.
  buffer.writeString(std::string("part"));
  buffer.writeUint32(5);
  EXPECT_EQ(expected, readAll(buffer));
}

TEST(TokenBufferTest, IteratorsShareTheReadPosition) {
  TokenBuffer buffer;
  appendToken(buffer, Token("one", 0, 2));
  appendToken(buffer, Token("two", 4, 6));

  auto first = buffer.iterator();
  Token t;
  ASSERT_TRUE(first->hasNext());
  ASSERT_TRUE(first->hasNext());  // asking twice does not skip a record
  first->next(t);
  EXPECT_EQ("one", t.term);
  ASSERT_TRUE(first->hasNext());
  first->next(t);
  EXPECT_FALSE(first->hasNext());

  // A new iterator rewinds the buffer, and the old one reads on from there.
  auto second = buffer.iterator();
  ASSERT_TRUE(first->hasNext());
  first->next(t);
  EXPECT_EQ("one", t.term);
  ASSERT_TRUE(second->hasNext());
  second->next(t);
  EXPECT_EQ("two", t.term);
  EXPECT_FALSE(second->hasNext());
}
