#include "analyzer/BasicWeiboTokenizer.h"

#include "common/Assert.h"

namespace vortm {
namespace analyzer {

namespace {

inline bool endsMention(unsigned char b) {
  return b == '\r' || b == ' ' || b == '\t' || b == '\n' || b == ':' || b == '@' || b == ')';
}

}  // namespace

bool BasicWeiboTokenizer::doTokenizeInternal(const char* text, unsigned int* pForwardRefBuf, unsigned int length,
                                             TokenBuffer& out, unsigned int base) {
  VOR_ASSERT(pForwardRefBuf);
  if (!m_charUtilityPtr) return false;
  if (length == 0) return true;
  if (pForwardRefBuf[0] > length || pForwardRefBuf[0] == 0) return false;

  const unsigned int closed = length;
  unsigned int enStart = closed, chStart = closed;
  char mark = 0;  // 0, '#' or '@'
  unsigned int markStart = closed;
  unsigned int i = 0;
  for (;;) {
    unsigned int charLength = pForwardRefBuf[i];
    unsigned char b = static_cast<unsigned char>(text[i]);
    if (mark == 0) {
      if (b == '#' || b == '@') {
        flushRun(text, enStart, i, closed, Token::TT_EN_WORD, out, base);
        flushRun(text, chStart, i, closed, Token::TT_CH_RUN, out, base);
        mark = static_cast<char>(b);
        markStart = i;
      } else {
        stepCharacter(text, i, charLength, enStart, chStart, closed, out, base);
      }
    } else if (mark == '#') {
      // A topic swallows everything up to and including its closing mark.
      if (b == '#') {
        appendToken(out, text + markStart, i - markStart + 1, static_cast<int>(base + markStart),
                    static_cast<int>(base + i), Token::TT_TOPIC, Token::TG_PLAIN);
        mark = 0;
        markStart = closed;
      }
    } else if (endsMention(b)) {
      appendToken(out, text + markStart, i - markStart, static_cast<int>(base + markStart),
                  static_cast<int>(base + i) - 1, Token::TT_MENTION, Token::TG_PLAIN);
      if (b == '@') {
        markStart = i;
      } else {
        mark = 0;
        markStart = closed;
      }
    }

    i += charLength;
    if (i >= length) {
      // Written whether or not a mark is open: with none, markStart is the
      // end of the text and the mention is empty, ending one byte before it
      // starts. An unclosed topic comes out here as a mention too.
      appendToken(out, text + markStart, length - markStart, static_cast<int>(base + markStart),
                  static_cast<int>(base + length) - 1, Token::TT_MENTION, Token::TG_PLAIN);
      flushRun(text, enStart, length, closed, Token::TT_EN_WORD, out, base);
      flushRun(text, chStart, length, closed, Token::TT_CH_RUN, out, base);
      return true;
    }
    if (pForwardRefBuf[i] > length - i || pForwardRefBuf[i] == 0) return false;
  }
}

}  // namespace analyzer
}  // namespace vortm
