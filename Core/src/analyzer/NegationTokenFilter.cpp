#include "analyzer/NegationTokenFilter.h"

#include <typeinfo>

#include "configure/Parameter.h"

namespace vortm {
namespace analyzer {

const std::string NegationTokenFilter::PARAM_AFTER_ONLY_DEGREE_WORDS_FILE = "after_only_degree_words_file";

NegationTokenFilter::NegationTokenFilter() : m_negationCount(0), m_inNegation(false) {}

NegationTokenFilter::NegationTokenFilter(const WordSetPtr& afterOnly)
    : m_afterOnlyDegreeWords(afterOnly), m_negationCount(0), m_inNegation(false) {}

NegationTokenFilter::~NegationTokenFilter() {}

bool NegationTokenFilter::config(const configure::Parameter& param) {
  return FilterWordSet::load(param, PARAM_AFTER_ONLY_DEGREE_WORDS_FILE, m_afterOnlyDegreeWords,
                             "Failed to Load After_Only_Degree_Words From");
}

bool NegationTokenFilter::isScopeEnd(Token::TType type) {
  return type == Token::TT_SEN_PUNC || type == Token::TT_CLAUSE_PUNC || type == Token::TT_QUESTION_MARK ||
         type == Token::TT_NEWLINE;
}

bool NegationTokenFilter::isOpeningNegation(const Token& token) const {
  if (token.tag != Token::TG_NEGATION && token.tag != Token::TG_EN_NEGATION) return false;
  return !FilterWordSet::contains(m_afterOnlyDegreeWords, token.term);
}

bool NegationTokenFilter::filterInternal(Token& token) {
  // Punctuation closes the scope and is then looked at like any token.
  if (isScopeEnd(token.type)) {
    m_inNegation = false;
    m_negationCount = 0;
  }
  if (isOpeningNegation(token)) {
    ++m_negationCount;
    m_inNegation = true;
    return false;
  }
  if (m_inNegation && token.tag >= Token::TG_DEGREE_10 && token.tag <= Token::TG_DEGREE_14) {
    m_inNegation = false;
    m_negationCount = 0;
  }
  return false;
}

common::AutoPtr<TokenFilter> NegationTokenFilter::cloneIgnoringStateInternal() {
  return common::AutoPtr<TokenFilter>(new NegationTokenFilter(m_afterOnlyDegreeWords), true);
}

bool NegationTokenFilter::resetState() {
  // A subclass may keep state of its own that only it knows.
  if (typeid(*this) != typeid(NegationTokenFilter)) return false;
  m_negationCount = 0;
  m_inNegation = false;
  return true;
}

}  // namespace analyzer
}  // namespace vortm
