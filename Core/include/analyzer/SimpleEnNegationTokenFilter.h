#ifndef VORTM_ANALYZER_SIMPLEENNEGATIONTOKENFILTER_H
#define VORTM_ANALYZER_SIMPLEENNEGATIONTOKENFILTER_H

#include "analyzer/TokenFilter.h"
#include "common/InstanceCreator.h"

namespace vortm {
namespace analyzer {

// The English negation in its simplest form: the one token right behind a
// run of English negation words is the scope. If it is an English word and
// the run was odd, it gets the prefix "not-"; its tag stays. Any other token
// just closes the scope.
class SimpleEnNegationTokenFilter : public TokenFilter {
 public:
  SimpleEnNegationTokenFilter();
  ~SimpleEnNegationTokenFilter() override;

  // Reads nothing.
  bool config(const configure::Parameter& param) override;
  bool filterInternal(Token& token) override;
  common::AutoPtr<TokenFilter> cloneIgnoringStateInternal() override;
  bool resetState() override;

 private:
  bool m_inNegation;
  unsigned int m_negationCount;
};

VORTM_DECLARE_CREATOR(SimpleEnNegationTokenFilterCreator, TokenFilter, SimpleEnNegationTokenFilter,
                      "simple_en_negationFilter");

}  // namespace analyzer
}  // namespace vortm

#endif
