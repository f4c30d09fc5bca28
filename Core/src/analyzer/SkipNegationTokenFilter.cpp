#include "analyzer/SkipNegationTokenFilter.h"

#include <string>
#include <typeinfo>

namespace vortm {
namespace analyzer {

namespace {
const std::string& negatedPrefix() {
  static const std::string s_prefix("NOT_");
  return s_prefix;
}
}  // namespace

SkipNegationTokenFilter::SkipNegationTokenFilter() : m_lastNegationEnd(0) {}

SkipNegationTokenFilter::SkipNegationTokenFilter(const WordSetPtr& afterOnly)
    : NegationTokenFilter(afterOnly), m_lastNegationEnd(0) {}

SkipNegationTokenFilter::~SkipNegationTokenFilter() {}

bool SkipNegationTokenFilter::filterInternal(Token& token) {
  const unsigned int start = static_cast<unsigned int>(token.startOffset);
  if (isScopeEnd(token.type)) {
    m_negationCount = 0;
    m_lastNegationEnd = static_cast<unsigned int>(-1);
  }
  if (isOpeningNegation(token)) {
    // A negation out of reach of the previous one starts a new count; one
    // within reach adds to it, so two close negations cancel out.
    if (m_lastNegationEnd == 0 || m_lastNegationEnd + NEGATION_REACH < start)
      m_negationCount = 1;
    else
      ++m_negationCount;
    m_lastNegationEnd = static_cast<unsigned int>(token.endOffset);
    return false;
  }
  if (m_lastNegationEnd != 0 && (m_negationCount & 1U) != 0 && start <= m_lastNegationEnd + NEGATION_REACH) {
    if (token.tag == Token::TG_POSITIVE)
      token.tag = Token::TG_NOT_POSITIVE;
    else if (token.tag == Token::TG_NEGATIVE)
      token.tag = Token::TG_NOT_NEGATIVE;
    else
      return false;  // not a sentiment word: the scope stays open
    token.term.insert(0, negatedPrefix());
    m_lastNegationEnd = static_cast<unsigned int>(-1);
    m_negationCount = 0;
  }
  return false;
}

common::AutoPtr<TokenFilter> SkipNegationTokenFilter::cloneIgnoringStateInternal() {
  return common::AutoPtr<TokenFilter>(new SkipNegationTokenFilter(m_afterOnlyDegreeWords), true);
}

bool SkipNegationTokenFilter::resetState() {
  if (typeid(*this) != typeid(SkipNegationTokenFilter)) return false;
  m_negationCount = 0;
  m_inNegation = false;
  m_lastNegationEnd = 0;
  return true;
}

}  // namespace analyzer
}  // namespace vortm
