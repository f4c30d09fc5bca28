#ifndef VORTM_ANALYZER_ANALYZER_H
#define VORTM_ANALYZER_ANALYZER_H

#include <string>
#include <vector>

#include "analyzer/Dict.h"
#include "analyzer/Token.h"
#include "analyzer/TokenBuffer.h"
#include "analyzer/Tokenizer.h"
#include "common/AutoPtr.h"
#include "configure/Configurable.h"
#include "configure/Parameter.h"

namespace vortm {
namespace analyzer {

// The door through which text enters analysis: owns the chain of tokenizers
// and runs a text through it.
class Analyzer : public configure::Configurable {
 public:
  Analyzer() {}
  virtual ~Analyzer() {}

  // Keys: "tokenizers", a list of entries with "identifier" and "param", in
  // chain order; "encode", the encoding of user words (default "utf-8").
  bool config(const configure::Parameter& param) override;
  // Offsets in `out` count bytes of `text`. With `isolated` true several
  // threads may tokenize through one analyzer at once.
  virtual bool doTokenize(const std::string& text, TokenBuffer& out, bool isolated);

  // Puts a dictionary tokenizer of these words at the head of the chain, so
  // that they win against everything behind it; detachPreTokenizer() undoes
  // it. Neither takes a lock: no other thread may tokenize meanwhile.
  bool attachUserWords(const std::vector<std::string>& words, Token::TType type, Token::TTag tag);
  void detachPreTokenizer();
  // The dictionary attachUserWords would put at the head, for a caller that
  // matches the words itself without relinking the chain; null for an
  // encoding without a dictionary.
  // The lexer that dictionary's tokenizer would cut characters with; null
  // where there is no such dictionary.
  const char* userWordLexer() const;
  common::AutoPtr<Dict> makeUserWordDict(const std::vector<std::string>& words, Token::TType type,
                                         Token::TTag tag) const;

  const common::AutoPtr<Tokenizer>& getTokenizer() const { return m_tokenizerPtr; }
  const std::string& getEncode() const { return m_encode; }

 protected:
  common::AutoPtr<Tokenizer> m_tokenizerPtr;
  std::string m_encode;
};

}  // namespace analyzer
}  // namespace vortm

#endif
