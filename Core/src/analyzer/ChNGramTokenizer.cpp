#include "analyzer/ChNGramTokenizer.h"

#include <map>
#include <memory>

#include "common/CreatorRegister.h"
#include "common/InstanceCreator.h"

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

template <class Emit>
bool ChNGramTokenizer::forEachGram(const unsigned int* pForwardRefBuf, unsigned int length, Emit emit) const {
  for (unsigned int i = 0; i < length; i += pForwardRefBuf[i]) {
    if (pForwardRefBuf[i] == 0 || pForwardRefBuf[i] > length - i) return false;
    unsigned int j = i;  // start of the n-th character
    for (int n = 1; n <= m_maxN; ++n) {
      unsigned int charLength = pForwardRefBuf[j];
      if (charLength == 0 || charLength > length - j) return false;
      if (!m_isNFinite || n == m_maxN) emit(i, j + charLength - i);
      j += charLength;
      if (j >= length) break;
    }
  }
  return true;
}

bool ChNGramTokenizer::doTokenizeInternal(const char* text, unsigned int* pForwardRefBuf, unsigned int length,
                                          TokenBuffer& out, unsigned int base) {
  if (!m_lexerPtr || !m_charUtilityPtr || !text) return false;
  if (length == 0) return true;
  if (!pForwardRefBuf) return false;
  return forEachGram(pForwardRefBuf, length, [&](unsigned int start, unsigned int size) {
    appendToken(out, text + start, size, static_cast<int>(base + start), static_cast<int>(base + start + size - 1),
                Token::TT_NGRAM, Token::TG_PLAIN);
  });
}

bool ChNGramTokenizer::gramSpans(const std::string& text, std::vector<GramSpan>& spans) {
  spans.clear();
  if (text.empty()) return true;
  if (!m_lexerPtr || !m_charUtilityPtr) return false;
  // A lexer is a cursor: each thread keeps its own, one per identifier.
  thread_local std::map<std::string, std::unique_ptr<CharacterLexer> > lexers;
  std::unique_ptr<CharacterLexer>& lexer = lexers[m_lexerIdentifier];
  if (!lexer) lexer.reset(common::InstanceCreator<CharacterLexer>::getCreation(m_lexerIdentifier));
  if (!lexer) return false;
  thread_local std::vector<unsigned int> forward;
  unsigned int length = static_cast<unsigned int>(text.size());
  forward.resize(length);
  lexCharacters(text.data(), length, *lexer, forward.data());
  return forEachGram(forward.data(), length,
                     [&](unsigned int start, unsigned int size) { spans.push_back(GramSpan{start, size}); });
}

bool ChNGramTokenizer::appendGramSpans(const unsigned int* pForwardRefBuf, unsigned int length, unsigned int base,
                                       std::vector<GramSpan>& spans) const {
  return forEachGram(pForwardRefBuf, length,
                     [&](unsigned int start, unsigned int size) { spans.push_back(GramSpan{base + start, size}); });
}

}  // namespace analyzer
}  // namespace vortm
