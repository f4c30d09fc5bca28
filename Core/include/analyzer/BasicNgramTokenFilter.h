#ifndef VORTM_ANALYZER_BASICNGRAMTOKENFILTER_H
#define VORTM_ANALYZER_BASICNGRAMTOKENFILTER_H

#include <string>

#include "analyzer/FilterWordSet.h"
#include "analyzer/TokenFilter.h"
#include "common/InstanceCreator.h"

namespace vortm {
namespace analyzer {

// Thins out character n-grams around a Chinese negation word: the n-grams
// that begin inside the negation word or directly behind it are dropped, so
// that a negated phrase does not also count as its plain parts. The negation
// word itself and n-grams beginning where it begins stay.
class BasicNgramTokenFilter : public TokenFilter {
 public:
  BasicNgramTokenFilter();
  ~BasicNgramTokenFilter() override;

  bool config(const configure::Parameter& param) override;
  bool filterInternal(Token& token) override;
  common::AutoPtr<TokenFilter> cloneIgnoringStateInternal() override;
  bool resetState() override;

  static const std::string PARAM_CH_NEGATION_WORD_FILE;

 private:
  // Offsets of the last negation word seen, -1 before the first.
  int m_negationEnd;
  int m_negationStart;
  WordSetPtr m_chNegationWords;
};

VORTM_DECLARE_CREATOR(BasicNgramTokenFilterCreator, TokenFilter, BasicNgramTokenFilter, "defaultNgramFilter");

}  // namespace analyzer
}  // namespace vortm

#endif
