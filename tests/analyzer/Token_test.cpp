#include <gtest/gtest.h>

#include "TokenStreams.h"

using vortm::analyzer::Token;
using vortm::analyzer::TokenBuffer;
using vortm::analyzer::appendToken;
using vortm::testing::tokenStream;

TEST(TokenBufferTest, RoundTripKeepsEveryField) {
  TokenBuffer buffer;
  EXPECT_FALSE(buffer.iterator()->hasNext());
  appendToken(buffer, Token("good", 0, 3, Token::TT_EN_WORD, Token::TG_POSITIVE));
  const char text[] = "xxa\0bxx";  // written straight from the text, with a zero byte in the term
  appendToken(buffer, text + 2, 3, 2, 4, Token::TT_SYMBOL, Token::TG_PLAIN);
  appendToken(buffer, Token());
  appendToken(buffer, Token("", 7, 7, static_cast<Token::TType>(255), static_cast<Token::TTag>(200)));
  const std::vector<std::string> expected = {"good/0/3/14/6", std::string("a\0b", 3) + "/2/4/1/1", "/-1/-1/1/1",
                                              "/7/7/255/200"};
  EXPECT_EQ(expected, tokenStream(buffer));
  EXPECT_EQ(4u, buffer.countRecords());
  // A record cut short at the end ends the iteration without a token, and is
  // not counted.
  buffer.writeString(std::string("part"));
  buffer.writeUint32(5);
  EXPECT_EQ(expected, tokenStream(buffer));
  EXPECT_EQ(4u, buffer.countRecords());
}

TEST(TokenBufferTest, IteratorsShareTheReadPosition) {
  TokenBuffer buffer;
  appendToken(buffer, Token("one", 0, 2));
  appendToken(buffer, Token("two", 4, 6));
  Token t;
  auto next = [&t](TokenBuffer::Iterator& it) { return it.hasNext() ? (it.next(t), t.term) : "end"; };
  auto first = buffer.iterator();
  ASSERT_TRUE(first->hasNext());  // asking twice does not skip a record
  EXPECT_EQ("one", next(*first));
  EXPECT_EQ("two", next(*first));
  EXPECT_EQ("end", next(*first));
  // A new iterator rewinds the buffer, and the old one reads on from there.
  auto second = buffer.iterator();
  EXPECT_EQ("one", next(*first));
  EXPECT_EQ("two", next(*second));
  EXPECT_EQ("end", next(*second));
}
