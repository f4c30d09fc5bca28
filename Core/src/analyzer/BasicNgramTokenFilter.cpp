#include "analyzer/BasicNgramTokenFilter.h"

#include <typeinfo>

#include "configure/Parameter.h"

namespace vortm {
namespace analyzer {

const std::string BasicNgramTokenFilter::PARAM_CH_NEGATION_WORD_FILE = "ch_negation_word_file";

BasicNgramTokenFilter::BasicNgramTokenFilter() : m_negationEnd(-1), m_negationStart(-1) {}

BasicNgramTokenFilter::~BasicNgramTokenFilter() {}

bool BasicNgramTokenFilter::config(const configure::Parameter& param) {
  return FilterWordSet::load(param, PARAM_CH_NEGATION_WORD_FILE, m_chNegationWords,
                             "Failed to Load Negation Words From");
}

bool BasicNgramTokenFilter::filterInternal(Token& token) {
  if (token.type != Token::TT_NGRAM) return false;
  if (FilterWordSet::contains(m_chNegationWords, token.term)) {
    m_negationStart = token.startOffset;
    m_negationEnd = token.endOffset;
    return false;
  }
  return m_negationEnd >= 0 && token.startOffset <= m_negationEnd + 1 && token.startOffset != m_negationStart;
}

common::AutoPtr<TokenFilter> BasicNgramTokenFilter::cloneIgnoringStateInternal() {
  BasicNgramTokenFilter* copy = new BasicNgramTokenFilter();
  copy->m_chNegationWords = m_chNegationWords;
  return common::AutoPtr<TokenFilter>(copy, true);
}

bool BasicNgramTokenFilter::resetState() {
  if (typeid(*this) != typeid(BasicNgramTokenFilter)) return false;
  m_negationEnd = -1;
  m_negationStart = -1;
  return true;
}

}  // namespace analyzer
}  // namespace vortm
