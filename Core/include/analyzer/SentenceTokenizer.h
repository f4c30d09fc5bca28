#ifndef VORTM_ANALYZER_SENTENCETOKENIZER_H
#define VORTM_ANALYZER_SENTENCETOKENIZER_H

#include "analyzer/Tokenizer.h"
#include "common/InstanceCreator.h"

namespace vortm {
namespace analyzer {

// Cuts a text into TT_TEXT_SPAN clauses at Chinese sentence and clause
// punctuation, the ASCII question mark and line feeds. The delimiters make
// no token.
class SentenceTokenizer : public Tokenizer {
 public:
  using Tokenizer::config;
  bool config(const configure::Parameter& param) override;
  bool doTokenizeInternal(const char* text, unsigned int* pForwardRefBuf, unsigned int length, TokenBuffer& out,
                          unsigned int base) override;
};

VORTM_DECLARE_CREATOR(SentenceTokenizerCreator, Tokenizer, SentenceTokenizer, "sentenceTokenzier");

}  // namespace analyzer
}  // namespace vortm

#endif
