#ifndef VORELIN_TESTS_MODULAR_TOKENBUILDER_H
#define VORELIN_TESTS_MODULAR_TOKENBUILDER_H

#include <string>
#include <vector>

#include "analyzer/Token.h"
#include "common/AutoPtr.h"
#include "configure/BasicParamParser.h"
#include "configure/Parameter.h"

namespace vortm {
namespace testing {

// Hand-built token lists: each token carries the type and tag a test needs,
// with offsets laid end to end.
class TokenList {
 public:
  TokenList& add(const std::string& term, int type, int tag = analyzer::Token::TG_PLAIN) {
    int start = m_tokens.empty() ? 0 : m_tokens.back().endOffset + 1;
    m_tokens.emplace_back(term, start, start + static_cast<int>(term.size()) - 1,
                          static_cast<analyzer::Token::TType>(type), static_cast<analyzer::Token::TTag>(tag));
    return *this;
  }
  // A word with the given tag.
  TokenList& word(const std::string& term, int tag = analyzer::Token::TG_PLAIN) {
    return add(term, analyzer::Token::TT_EN_WORD, tag);
  }
  std::vector<analyzer::Token>& tokens() { return m_tokens; }

 private:
  std::vector<analyzer::Token> m_tokens;
};

inline common::AutoPtr<configure::Parameter> parseParam(const std::string& xml) {
  configure::BasicParamParser parser;
  common::AutoPtr<configure::Parameter> root;
  if (!parser.doParseFromText(xml, root)) return common::AutoPtr<configure::Parameter>();
  return root;
}

}  // namespace testing
}  // namespace vortm

#endif
