#ifndef VORTM_ANALYZER_TRIEDICTMAXFORWARDTOKENIZER_H
#define VORTM_ANALYZER_TRIEDICTMAXFORWARDTOKENIZER_H

#include <string>

#include "analyzer/Dict.h"
#include "analyzer/DictTokenizer.h"
#include "common/AutoPtr.h"
#include "common/InstanceCreator.h"

namespace vortm {
namespace analyzer {

// Segments each text it is given by maximum forward match over a trie
// dictionary; what the dictionary does not know goes on as TT_TEXT_SPAN
// tokens to the next tokenizer of the chain. The dictionary is shared by
// copies of the pointer and only read while tokenizing; isInDict and
// insertWord use its lexer and belong to one thread at a time.
class TrieDictMaxForwardTokenizer : public DictTokenizer {
 public:
  static const std::string PARAM_DICT_FILE;

  TrieDictMaxForwardTokenizer();
  explicit TrieDictMaxForwardTokenizer(common::AutoPtr<Dict> dictPtr);
  virtual ~TrieDictMaxForwardTokenizer();

  using DictTokenizer::config;
  // The keys of Tokenizer::config and "dict_file", a dictionary saved for
  // the width of the configured encoding.
  bool config(const configure::Parameter& param) override;
  bool isInDict(const std::string& word) override;
  bool doTokenizeInternal(const char* text, unsigned int* pForwardRefBuf, unsigned int length, TokenBuffer& out,
                          unsigned int base) override;
  // Stores (type << 8) | tag, the value that match() splits back.
  bool insertWord(const std::string& word, Token::TType type, Token::TTag tag) override;

  common::AutoPtr<Dict> getDict() const { return m_dictPtr; }

 protected:
  common::AutoPtr<Dict> m_dictPtr;
};

VORTM_DECLARE_CREATOR(TrieDictMaxForwardTokenizerCreator, Tokenizer, TrieDictMaxForwardTokenizer,
                      "trieDictMaxForwardTokenzier");

}  // namespace analyzer
}  // namespace vortm

#endif
