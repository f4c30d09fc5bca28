#ifndef VORTM_ANALYZER_BASICEWORDTOKENFILTER_H
#define VORTM_ANALYZER_BASICEWORDTOKENFILTER_H

#include <string>

#include "analyzer/FilterWordSet.h"
#include "analyzer/TokenFilter.h"
#include "common/InstanceCreator.h"

namespace vortm {
namespace analyzer {

// Classifies English words by the configured word lists: positive, negative,
// negation or stop word. One-byte English tokens are dropped; everything
// else passes, stop words included (they are only tagged).
class BasicEWordTokenFilter : public TokenFilter {
 public:
  BasicEWordTokenFilter();
  ~BasicEWordTokenFilter() override;

  bool config(const configure::Parameter& param) override;
  bool filterInternal(Token& token) override;
  common::AutoPtr<TokenFilter> cloneIgnoringStateInternal() override;
  bool resetState() override;

  static const std::string PARAM_EN_NEG_SENTI_FILE;
  static const std::string PARAM_EN_POS_SENTI_FILE;
  static const std::string PARAM_EN_STOPWORD_FILE;
  static const std::string PARAM_EN_NEGATION_WORD_FILE;
  static const std::string PARAM_STEM;
  static const std::string PARAM_TO_LOWCASE;

 private:
  // A clone's start: the settings and shared lists of `source`, a chain of its own.
  explicit BasicEWordTokenFilter(const BasicEWordTokenFilter* source);

  // Read from the configuration and carried into clones; there is no stemmer,
  // so words are never stemmed whatever it says.
  bool m_isStem;
  bool m_isToLowcase;
  WordSetPtr m_enNegSentiWords;
  WordSetPtr m_enPosSentiWords;
  WordSetPtr m_enStopWords;
  WordSetPtr m_enNegationWords;
};

VORTM_DECLARE_CREATOR(BasicEWordTokenFilterCreator, TokenFilter, BasicEWordTokenFilter, "defaultEnFilter");

}  // namespace analyzer
}  // namespace vortm

#endif
