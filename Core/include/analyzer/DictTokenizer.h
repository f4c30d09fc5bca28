#ifndef VORTM_ANALYZER_DICTTOKENIZER_H
#define VORTM_ANALYZER_DICTTOKENIZER_H

#include <string>

#include "analyzer/Tokenizer.h"

namespace vortm {
namespace analyzer {

// A tokenizer that rests on a Dict and can take words at run time.
class DictTokenizer : public Tokenizer {
 public:
  using Tokenizer::config;
  bool config(const configure::Parameter& param) override = 0;
  // Asks its own dictionary first, then the rest of the chain.
  bool isInDict(const std::string& word) override = 0;
  bool doTokenizeInternal(const char* text, unsigned int* pForwardRefBuf, unsigned int length, TokenBuffer& out,
                          unsigned int base) override = 0;
  bool isDictBasedTokenizer() override { return true; }
  virtual bool insertWord(const std::string& word, Token::TType type, Token::TTag tag) = 0;
};

}  // namespace analyzer
}  // namespace vortm

#endif
