#include "analyzer/SentenceTokenizer.h"

namespace vortm {
namespace analyzer {

bool SentenceTokenizer::config(const configure::Parameter& param) { return Tokenizer::config(param); }

bool SentenceTokenizer::doTokenizeInternal(const char* text, unsigned int* pForwardRefBuf, unsigned int length,
                                           TokenBuffer& out, unsigned int base) {
  if (!pForwardRefBuf || !m_charUtilityPtr) return false;
  unsigned int spanStart = 0;
  for (unsigned int i = 0; i < length;) {
    unsigned int charLength = pForwardRefBuf[i];
    if (charLength == 0 || charLength > length - i) return false;
    unsigned char b = static_cast<unsigned char>(text[i]);
    bool delimiter = b == '?' || (charLength == 1 && b == '\n');
    if (!delimiter) {
      std::string ch(text + i, charLength);
      delimiter = m_charUtilityPtr->isChSentencePunction(ch) || m_charUtilityPtr->isChClausePunction(ch);
    }
    if (delimiter) {
      if (spanStart != i)
        appendToken(out, text + spanStart, i - spanStart, static_cast<int>(base + spanStart),
                    static_cast<int>(base + i - 1), Token::TT_TEXT_SPAN, Token::TG_PLAIN);
      spanStart = i + charLength;
    }
    i += charLength;
  }
  if (spanStart < length)
    appendToken(out, text + spanStart, length - spanStart, static_cast<int>(base + spanStart),
                static_cast<int>(base + length - 1), Token::TT_TEXT_SPAN, Token::TG_PLAIN);
  return true;
}

}  // namespace analyzer
}  // namespace vortm
