#ifndef VORTM_ANALYZER_CHNGRAMTOKENIZER_H
#define VORTM_ANALYZER_CHNGRAMTOKENIZER_H

#include <string>
#include <vector>

#include "analyzer/Tokenizer.h"
#include "common/InstanceCreator.h"

namespace vortm {
namespace analyzer {

// Overlapping character n-grams (TT_NGRAM) from every character start, with
// no regard to the class of the characters.
class ChNGramTokenizer : public Tokenizer {
 public:
  ChNGramTokenizer() : m_maxN(4), m_isNFinite(false) {}

  using Tokenizer::config;
  // Adds "max_n" (1 to 6, otherwise 4) and "is_n_finite" ("true" for only
  // the max_n-grams).
  bool config(const configure::Parameter& param) override;
  bool doTokenizeInternal(const char* text, unsigned int* pForwardRefBuf, unsigned int length, TokenBuffer& out,
                          unsigned int base) override;

  // Where the n-grams of `text` lie, in the order doTokenize gives them;
  // for hosts that only look the grams up and need no tokens. Fails where
  // doTokenize of this tokenizer alone would fail.
  struct GramSpan {
    unsigned int start;
    unsigned int length;
  };
  bool gramSpans(const std::string& text, std::vector<GramSpan>& spans);
  // The same for `length` bytes whose character lengths are already known
  // (as doLexer writes them), appended to `spans` with `base` added.
  bool appendGramSpans(const unsigned int* pForwardRefBuf, unsigned int length, unsigned int base,
                       std::vector<GramSpan>& spans) const;

  int getMaxN() const { return m_maxN; }
  bool isNFinite() const { return m_isNFinite; }

 protected:
  // Calls emit(start, length) for each n-gram.
  template <class Emit>
  bool forEachGram(const unsigned int* pForwardRefBuf, unsigned int length, Emit emit) const;

  int m_maxN;
  bool m_isNFinite;
};

VORTM_DECLARE_CREATOR(ChNGramTokenizerCreator, Tokenizer, ChNGramTokenizer, "chNGramTokenzier");

}  // namespace analyzer
}  // namespace vortm

#endif
