#ifndef VORTM_ANALYZER_TOKEN_H
#define VORTM_ANALYZER_TOKEN_H

#include <string>

namespace vortm {
namespace analyzer {

// The record passed through the whole analysis chain. Offsets count bytes of
// the text given to the analyzer; endOffset is inclusive.
class Token {
 public:
  // The numbers are stored in dictionary files, so they never change. Type
  // and tag are fixed 4-byte integers: values that a dictionary supplies
  // outside these lists (anything up to 255) pass through untouched.
  enum TType : int {
    TT_UNSET = 0,
    TT_SYMBOL = 1,
    TT_CH_WORD = 2,
    TT_TEXT_SPAN = 3,
    TT_USER_WORD = 4,
    TT_CH_RUN = 6,
    TT_NGRAM = 8,
    TT_SEN_PUNC = 9,
    TT_CLAUSE_PUNC = 10,
    TT_QUOTE_BEGIN = 11,
    TT_QUOTE_END = 12,
    TT_QUESTION_MARK = 13,
    TT_EN_WORD = 14,
    TT_NEWLINE = 19,
    TT_TOPIC = 20,
    TT_MENTION = 21
  };

  enum TTag : int {
    TG_NONE = 0,
    TG_PLAIN = 1,
    TG_POSITIVE = 6,
    TG_NEGATIVE = 7,
    TG_NOT_POSITIVE = 8,
    TG_NOT_NEGATIVE = 9,
    TG_DEGREE_10 = 10,
    TG_DEGREE_11 = 11,
    TG_DEGREE_12 = 12,
    TG_DEGREE_13 = 13,
    TG_DEGREE_14 = 14,
    TG_NEGATION = 15,
    TG_EN_NEGATION = 16,
    TG_STOPWORD = 17,
    TG_BUT_CONJ = 18,
    TG_THOUGH_CONJ = 19,
    TG_SENTI_20 = 20,
    TG_ATTRIBUTE_21 = 21,
    TG_ATTRIBUTE_22 = 22,
    TG_SENTI_23 = 23,
    TG_TARGET = 25
  };

  Token() : term(), startOffset(-1), endOffset(-1), type(TT_SYMBOL), tag(TG_PLAIN) {}
  Token(const std::string& t, int start, int end, TType ty = TT_SYMBOL, TTag tg = TG_PLAIN)
      : term(t), startOffset(start), endOffset(end), type(ty), tag(tg) {}

  std::string term;
  int startOffset;
  int endOffset;
  TType type;
  TTag tag;
};

static_assert(sizeof(Token::TType) == 4, "a token type is stored as 4 bytes");
static_assert(sizeof(Token::TTag) == 4, "a token tag is stored as 4 bytes");

}  // namespace analyzer
}  // namespace vortm

#endif
