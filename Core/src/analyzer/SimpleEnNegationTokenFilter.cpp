#include "analyzer/SimpleEnNegationTokenFilter.h"

#include <string>
#include <typeinfo>

namespace vortm {
namespace analyzer {

namespace {
const std::string& negatedPrefix() {
  static const std::string s_prefix("not-");
  return s_prefix;
}
}  // namespace

SimpleEnNegationTokenFilter::SimpleEnNegationTokenFilter() : m_inNegation(false), m_negationCount(0) {}

SimpleEnNegationTokenFilter::~SimpleEnNegationTokenFilter() {}

bool SimpleEnNegationTokenFilter::config(const configure::Parameter&) { return true; }

bool SimpleEnNegationTokenFilter::filterInternal(Token& token) {
  const bool isEnglish = token.type == Token::TT_EN_WORD;
  if (isEnglish && token.tag == Token::TG_EN_NEGATION) {
    ++m_negationCount;
    m_inNegation = true;
    return false;
  }
  if (m_inNegation && isEnglish && (m_negationCount & 1U) != 0) token.term.insert(0, negatedPrefix());
  m_inNegation = false;
  m_negationCount = 0;
  return false;
}

common::AutoPtr<TokenFilter> SimpleEnNegationTokenFilter::cloneIgnoringStateInternal() {
  return common::AutoPtr<TokenFilter>(new SimpleEnNegationTokenFilter(), true);
}

bool SimpleEnNegationTokenFilter::resetState() {
  if (typeid(*this) != typeid(SimpleEnNegationTokenFilter)) return false;
  m_inNegation = false;
  m_negationCount = 0;
  return true;
}

}  // namespace analyzer
}  // namespace vortm
