#include "analyzer/BasicTokenizer.h"

namespace vortm {
namespace analyzer {

namespace {

inline bool isEnWordByte(unsigned char b) {
  return (b >= 'a' && b <= 'z') || (b >= 'A' && b <= 'Z') || b == '-' || b == '\'';
}

}  // namespace

bool BasicTokenizer::config(const configure::Parameter& param) { return Tokenizer::config(param); }

void BasicTokenizer::flushRun(const char* text, unsigned int& start, unsigned int end, unsigned int closed,
                              Token::TType type, TokenBuffer& out, unsigned int base) {
  if (start == closed) return;
  appendToken(out, text + start, end - start, static_cast<int>(base + start), static_cast<int>(base + end - 1), type,
              Token::TG_PLAIN);
  start = closed;
}

void BasicTokenizer::stepCharacter(const char* text, unsigned int pos, unsigned int length, unsigned int& enStart,
                                   unsigned int& chStart, unsigned int closed, TokenBuffer& out, unsigned int base) {
  unsigned char b = static_cast<unsigned char>(text[pos]);
  // ASCII letters are told apart on the raw byte, without making a string.
  if (length == 1 && isEnWordByte(b)) {
    flushRun(text, chStart, pos, closed, Token::TT_CH_RUN, out, base);
    if (enStart == closed) enStart = pos;
    return;
  }
  std::string ch(text + pos, length);
  if (m_charUtilityPtr->isChineseWordCharacter(ch)) {
    flushRun(text, enStart, pos, closed, Token::TT_EN_WORD, out, base);
    if (chStart == closed) chStart = pos;
    return;
  }
  flushRun(text, enStart, pos, closed, Token::TT_EN_WORD, out, base);
  flushRun(text, chStart, pos, closed, Token::TT_CH_RUN, out, base);

  Token::TType type = Token::TT_SYMBOL;
  if (m_charUtilityPtr->isChQuotationMarkBegin(ch))
    type = Token::TT_QUOTE_BEGIN;
  else if (m_charUtilityPtr->isChQuotationMarkEnd(ch))
    type = Token::TT_QUOTE_END;
  else if ((m_charUtilityPtr->isChSentencePunction(ch) || b == '?') &&
           (m_charUtilityPtr->isChQuestionMark(ch) || b == '?'))
    type = Token::TT_QUESTION_MARK;
  else if (m_charUtilityPtr->isChSentencePunction(ch))
    type = Token::TT_SEN_PUNC;
  else if (m_charUtilityPtr->isChClausePunction(ch))
    type = Token::TT_CLAUSE_PUNC;
  else if (length == 1 && b == '\n')
    type = Token::TT_NEWLINE;

  if (length == 1 && (b == '\r' || b == ' ' || b == '\t')) return;
  appendToken(out, text + pos, length, static_cast<int>(base + pos), static_cast<int>(base + pos + length - 1), type,
              Token::TG_PLAIN);
}

bool BasicTokenizer::doTokenizeInternal(const char* text, unsigned int* pForwardRefBuf, unsigned int length,
                                        TokenBuffer& out, unsigned int base) {
  if (!pForwardRefBuf || !m_charUtilityPtr || length == 0 || pForwardRefBuf[0] > length ||
      pForwardRefBuf[0] == 0)
    return false;
  const unsigned int closed = length;
  unsigned int enStart = closed, chStart = closed;
  unsigned int i = 0;
  for (;;) {
    unsigned int charLength = pForwardRefBuf[i];
    stepCharacter(text, i, charLength, enStart, chStart, closed, out, base);
    i += charLength;
    if (i >= length) {
      flushRun(text, enStart, length, closed, Token::TT_EN_WORD, out, base);
      flushRun(text, chStart, length, closed, Token::TT_CH_RUN, out, base);
      return true;
    }
    if (pForwardRefBuf[i] > length - i || pForwardRefBuf[i] == 0) return false;
  }
}

}  // namespace analyzer
}  // namespace vortm
