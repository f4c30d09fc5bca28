#include "analyzer/BasicEWordTokenFilter.h"

#include <typeinfo>

#include "configure/Parameter.h"
#include "utility/Utility.h"

namespace vortm {
namespace analyzer {

const std::string BasicEWordTokenFilter::PARAM_EN_NEG_SENTI_FILE = "en_neg_senti_file";
const std::string BasicEWordTokenFilter::PARAM_EN_POS_SENTI_FILE = "en_pos_senti_file";
const std::string BasicEWordTokenFilter::PARAM_EN_STOPWORD_FILE = "en_stopword_file";
const std::string BasicEWordTokenFilter::PARAM_EN_NEGATION_WORD_FILE = "en_negation_word_file";
const std::string BasicEWordTokenFilter::PARAM_STEM = "stem";
const std::string BasicEWordTokenFilter::PARAM_TO_LOWCASE = "to_lowcase";

BasicEWordTokenFilter::BasicEWordTokenFilter() : m_isStem(false), m_isToLowcase(true) {}

BasicEWordTokenFilter::BasicEWordTokenFilter(const BasicEWordTokenFilter* source)
    : m_isStem(source->m_isStem),
      m_isToLowcase(source->m_isToLowcase),
      m_enNegSentiWords(source->m_enNegSentiWords),
      m_enPosSentiWords(source->m_enPosSentiWords),
      m_enStopWords(source->m_enStopWords),
      m_enNegationWords(source->m_enNegationWords) {}

BasicEWordTokenFilter::~BasicEWordTokenFilter() {}

bool BasicEWordTokenFilter::config(const configure::Parameter& param) {
  if (!FilterWordSet::load(param, PARAM_EN_NEG_SENTI_FILE, m_enNegSentiWords,
                           "Failed to Load English Negative Words From"))
    return false;
  if (!FilterWordSet::load(param, PARAM_EN_POS_SENTI_FILE, m_enPosSentiWords,
                           "Failed to Load English Positive Words From"))
    return false;
  if (!FilterWordSet::load(param, PARAM_EN_STOPWORD_FILE, m_enStopWords, "Failed to Load English Stopwords From"))
    return false;
  if (!FilterWordSet::load(param, PARAM_EN_NEGATION_WORD_FILE, m_enNegationWords,
                           "Failed to Load English Negation Words From"))
    return false;

  std::string value;
  if (param[PARAM_STEM].getStringValue(value)) {
    utility::Utility::toLowcase(value);
    m_isStem = (value == "true");
  }
  value.clear();
  if (param[PARAM_TO_LOWCASE].getStringValue(value)) {
    utility::Utility::toLowcase(value);
    if (value == "false") m_isToLowcase = false;
  }
  // Copies made for other threads carry the flags.
  noteChainsChanged();
  return true;
}

bool BasicEWordTokenFilter::filterInternal(Token& token) {
  if (token.type != Token::TT_EN_WORD) return false;
  // A lone letter, hyphen or apostrophe carries nothing worth keeping.
  if (token.term.size() < 2) return true;

  std::string word = token.term;
  if (m_isToLowcase) utility::Utility::toLowcase(word);

  // Positive is tested first, so a word listed on both sides counts as
  // positive.
  if (FilterWordSet::contains(m_enPosSentiWords, word))
    token.tag = Token::TG_POSITIVE;
  else if (FilterWordSet::contains(m_enNegSentiWords, word))
    token.tag = Token::TG_NEGATIVE;
  else if (FilterWordSet::contains(m_enNegationWords, word))
    token.tag = Token::TG_EN_NEGATION;
  else if (FilterWordSet::contains(m_enStopWords, word))
    token.tag = Token::TG_STOPWORD;

  // Lower-casing shows in the output whether or not a list knew the word.
  token.term.swap(word);
  return false;
}

common::AutoPtr<TokenFilter> BasicEWordTokenFilter::cloneIgnoringStateInternal() {
  return common::AutoPtr<TokenFilter>(new BasicEWordTokenFilter(this), true);
}

// Nothing of one text is remembered for the next.
bool BasicEWordTokenFilter::resetState() { return typeid(*this) == typeid(BasicEWordTokenFilter); }

}  // namespace analyzer
}  // namespace vortm
