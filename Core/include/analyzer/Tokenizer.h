#ifndef VORTM_ANALYZER_TOKENIZER_H
#define VORTM_ANALYZER_TOKENIZER_H

#include <map>
#include <string>
#include <vector>

#include "analyzer/CharacterLexer.h"
#include "analyzer/Token.h"
#include "analyzer/TokenBuffer.h"
#include "analyzer/TokenFilter.h"
#include "common/AutoPtr.h"
#include "configure/Configurable.h"
#include "configure/Parameter.h"
#include "utility/CharacterUtility.h"

namespace vortm {
namespace analyzer {

class Analyzer;

// One link of the analyzer's chain. A tokenizer finishes what it can into
// tokens and hands the spans it leaves open (TT_CH_RUN, TT_TEXT_SPAN) to the
// next tokenizer, each with its start offset as the base of what comes out.
class Tokenizer : public configure::Configurable {
 public:
  Tokenizer() {}
  virtual ~Tokenizer();

  // Keys: "encode" (required), "lexer_identifier", "token_filters".
  bool config(const configure::Parameter& param) override;
  // For a tokenizer built in code: "encode" and "lexer_identifier", no
  // filters.
  virtual bool config(std::map<std::string, std::string>& param);
  virtual bool isInDict(const std::string& word);
  // Tokenizes `length` bytes of `text`; pForwardRefBuf holds each
  // character's byte length at its first byte and 1 elsewhere, and `base` is
  // added to every offset written.
  virtual bool doTokenizeInternal(const char* text, unsigned int* pForwardRefBuf, unsigned int length,
                                  TokenBuffer& out, unsigned int base) = 0;
  virtual bool isDictBasedTokenizer() { return false; }

  // Runs this tokenizer, its filters and the rest of the chain. With
  // `isolated` true the call uses a private lexer and cloned filters, so
  // several threads may tokenize through one chain.
  bool doTokenize(const std::string& text, TokenBuffer& out, bool isolated, unsigned int base);
  // This tokenizer alone, with the given lexer, no filters and no chain.
  bool doTokenize(const std::string& text, common::AutoPtr<CharacterLexer> lexer, TokenBuffer& out,
                  unsigned int base);
  // Fills forwardRefBuf and returns the lexer's last result; after a failure
  // the remaining bytes stand as characters of one byte.
  int doLexer(const char* text, unsigned int length, CharacterLexer& lexer, unsigned int* forwardRefBuf);
  // The same character lengths as doLexer, read straight off the bytes for
  // the library's own lexers, which is several times faster.
  void lexCharacters(const char* text, unsigned int length, CharacterLexer& lexer, unsigned int* forwardRefBuf);

  // Appends at the end of the chain; the new tail links back without owning.
  void attachPostTokenizer(common::AutoPtr<Tokenizer> next);
  // The first dictionary tokenizer of the chain takes all the words.
  bool insertUserWords(const std::vector<std::string>& words, Token::TType type, Token::TTag tag);

  const common::AutoPtr<Tokenizer>& getPostTokenizer() const { return m_postTokenizerPtr; }
  common::AutoPtr<Tokenizer> getPreTokenizer() const { return m_preTokenizerPtr; }
  const common::AutoPtr<TokenFilter>& getTokenFilter() const { return m_tokenFilterPtr; }
  const std::string& getEncode() const { return m_encode; }
  const std::string& getLexerIdentifier() const { return m_lexerIdentifier; }

 protected:
  // Lower-cases the name and picks the utility and the default lexer; warns
  // and answers false for an encoding it does not know.
  bool configEncode(const std::string& encode);
  // Builds m_lexerPtr from the registry under m_lexerIdentifier.
  bool makeLexer();
  // The lexer-taking doTokenize on a raw pointer, so that no shared AutoPtr
  // is copied on a path that several threads run at once.
  bool doTokenizeWith(const char* text, unsigned int length, CharacterLexer* lexer, std::vector<unsigned int>& refs,
                      TokenBuffer& out, unsigned int base);
  // The chain's step on raw bytes, so that a span handed on is not copied.
  bool doTokenizeBytes(const char* text, unsigned int length, TokenBuffer& out, bool isolated, unsigned int base);

  std::string m_encode;
  std::string m_lexerIdentifier;
  common::AutoPtr<CharacterLexer> m_lexerPtr;
  common::AutoPtr<utility::CharacterUtility> m_charUtilityPtr;
  // Back link; never owns, so the chain has no ownership cycle.
  common::AutoPtr<Tokenizer> m_preTokenizerPtr;
  common::AutoPtr<Tokenizer> m_postTokenizerPtr;
  common::AutoPtr<TokenFilter> m_tokenFilterPtr;

  // The analyzer relinks the chain's head when user words come and go.
  friend class Analyzer;
};

}  // namespace analyzer
}  // namespace vortm

#endif
