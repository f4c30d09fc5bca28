#ifndef VORTM_ANALYZER_NEGATIONTOKENFILTER_H
#define VORTM_ANALYZER_NEGATIONTOKENFILTER_H

#include <string>

#include "analyzer/FilterWordSet.h"
#include "analyzer/TokenFilter.h"
#include "common/InstanceCreator.h"

namespace vortm {
namespace analyzer {

// Follows the scope of a negation word: opened by a negation, closed by
// sentence or clause punctuation, a question mark, a line feed, or a degree
// word inside the scope. It only tracks the scope and never changes or drops
// a token; SkipNegationTokenFilter is the one that marks negated words, and a
// configuration chooses between them by identifier.
class NegationTokenFilter : public TokenFilter {
 public:
  NegationTokenFilter();
  ~NegationTokenFilter() override;

  bool config(const configure::Parameter& param) override;
  bool filterInternal(Token& token) override;
  common::AutoPtr<TokenFilter> cloneIgnoringStateInternal() override;
  bool resetState() override;

  static const std::string PARAM_AFTER_ONLY_DEGREE_WORDS_FILE;

 protected:
  // A fresh filter sharing `afterOnly`; clones are made on every isolated
  // call, so the set is shared at construction rather than assigned later.
  explicit NegationTokenFilter(const WordSetPtr& afterOnly);

  static bool isScopeEnd(Token::TType type);
  // A negation word that opens a scope here; those that count only behind a
  // degree word do not.
  bool isOpeningNegation(const Token& token) const;

  WordSetPtr m_afterOnlyDegreeWords;
  unsigned int m_negationCount;
  bool m_inNegation;
};

VORTM_DECLARE_CREATOR(NegationTokenFilterCreator, TokenFilter, NegationTokenFilter, "negationFilter");

}  // namespace analyzer
}  // namespace vortm

#endif
