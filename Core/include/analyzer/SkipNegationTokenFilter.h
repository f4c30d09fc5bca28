#ifndef VORTM_ANALYZER_SKIPNEGATIONTOKENFILTER_H
#define VORTM_ANALYZER_SKIPNEGATIONTOKENFILTER_H

#include "analyzer/NegationTokenFilter.h"
#include "common/InstanceCreator.h"

namespace vortm {
namespace analyzer {

// Marks the first sentiment word behind an odd number of negation words:
// "good" becomes "NOT_good" tagged TG_NOT_POSITIVE, a negative word likewise
// TG_NOT_NEGATIVE. The negation reaches over other tokens for 12 bytes past
// the end of the last negation word, and ends at punctuation of a sentence
// or clause, at a question mark, at a line feed, or at the word it marks.
class SkipNegationTokenFilter : public NegationTokenFilter {
 public:
  SkipNegationTokenFilter();
  ~SkipNegationTokenFilter() override;

  bool filterInternal(Token& token) override;
  common::AutoPtr<TokenFilter> cloneIgnoringStateInternal() override;
  bool resetState() override;

  // Bytes from the end of a negation word to the start of the word it can
  // still reach: three UTF-8 or five GBK Chinese characters in between.
  static const unsigned int NEGATION_REACH = 12;

 private:
  explicit SkipNegationTokenFilter(const WordSetPtr& afterOnly);

  // 0 until a negation is seen; a closed scope holds 0xFFFFFFFF, which the
  // unsigned arithmetic below turns into a reach up to byte 11.
  unsigned int m_lastNegationEnd;
};

VORTM_DECLARE_CREATOR(SkipNegationTokenFilterCreator, TokenFilter, SkipNegationTokenFilter, "skipNegationFilter");

}  // namespace analyzer
}  // namespace vortm

#endif
