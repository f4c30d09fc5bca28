#include "analyzer/ChNGramTokenizer.h"

#include "common/CreatorRegister.h"

namespace vortm {
namespace analyzer {

bool ChNGramTokenizer::config(const configure::Parameter& param) {
  common::gfn_creatorRegister();
  if (!Tokenizer::config(param)) return false;

  int maxN = 4;
  param["max_n"].getIntValue(maxN);
  m_maxN = (maxN < 1 || maxN > 6) ? 4 : maxN;

  std::string finite;
  m_isNFinite = param["is_n_finite"].getStringValue(finite) && finite == "true";
  return true;
}

bool ChNGramTokenizer::doTokenizeInternal(const char* text, unsigned int* pForwardRefBuf, unsigned int length,
                                          TokenBuffer& out, unsigned int base) {
  if (!m_lexerPtr || !m_charUtilityPtr || !text) return false;
  if (length == 0) return true;
  if (!pForwardRefBuf) return false;

  for (unsigned int i = 0; i < length; i += pForwardRefBuf[i]) {
    if (pForwardRefBuf[i] == 0 || pForwardRefBuf[i] > length - i) return false;
    unsigned int j = i;  // start of the n-th character
    for (int n = 1; n <= m_maxN; ++n) {
      unsigned int charLength = pForwardRefBuf[j];
      if (charLength == 0 || charLength > length - j) return false;
      if (!m_isNFinite || n == m_maxN)
        appendToken(out, text + i, j + charLength - i, static_cast<int>(base + i),
                    static_cast<int>(base + j + charLength - 1), Token::TT_NGRAM, Token::TG_PLAIN);
      j += charLength;
      if (j >= length) break;
    }
  }
  return true;
}

}  // namespace analyzer
}  // namespace vortm
