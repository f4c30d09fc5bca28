#ifndef VORTM_ANALYZER_BASICTOKENIZER_H
#define VORTM_ANALYZER_BASICTOKENIZER_H

#include "analyzer/Tokenizer.h"
#include "common/InstanceCreator.h"

namespace vortm {
namespace analyzer {

// Separates English words (TT_EN_WORD), runs of Chinese word characters
// (TT_CH_RUN, left to the next tokenizer) and single punctuation marks,
// classified; blanks, tabs and carriage returns make no token.
class BasicTokenizer : public Tokenizer {
 public:
  using Tokenizer::config;
  bool config(const configure::Parameter& param) override;
  bool doTokenizeInternal(const char* text, unsigned int* pForwardRefBuf, unsigned int length, TokenBuffer& out,
                          unsigned int base) override;

 protected:
  // Writes the open run [start, end) as a token of `type` and closes it;
  // a closed run is held as `closed`, a position no open run can have.
  static void flushRun(const char* text, unsigned int& start, unsigned int end, unsigned int closed,
                       Token::TType type, TokenBuffer& out, unsigned int base);
  // The character of `length` bytes at `pos`: extends or opens a run, or
  // ends both and writes the character as a classified token.
  void stepCharacter(const char* text, unsigned int pos, unsigned int length, unsigned int& enStart,
                     unsigned int& chStart, unsigned int closed, TokenBuffer& out, unsigned int base);
};

VORTM_DECLARE_CREATOR(BasicTokenizerCreator, Tokenizer, BasicTokenizer, "basicTokenzier");

}  // namespace analyzer
}  // namespace vortm

#endif
