#ifndef VORTM_MODULAR_LEXCIONSENTISCORERTOKENIZEDDOCFILTER_H
#define VORTM_MODULAR_LEXCIONSENTISCORERTOKENIZEDDOCFILTER_H

#include "common/AutoPtr.h"
#include "modular/ILexcionSentiScorer.h"
#include "trainset/TokenizedDoc.h"

namespace vortm {
namespace modular {

// Labels unlabelled documents by a lexicon scorer: "pos" above 0.25, "neg"
// below -0.25, and drops those in between, bounds included (one polar word
// alone scores exactly 0.25, too little to trust). Documents already
// labelled "pos" or "neg" pass unscored. Only reads the scorer, so one
// filter may serve many threads.
class LexcionSentiScorerTokenizedDocFilter : public trainset::TokenizedDocFilter {
 public:
  explicit LexcionSentiScorerTokenizedDocFilter(common::AutoPtr<ILexcionSentiScorer> scorer);
  bool filter(trainset::TokenizedDoc& doc) override;

  static const double kPositiveBound;
  static const double kNegativeBound;

 protected:
  common::AutoPtr<ILexcionSentiScorer> m_scorerPtr;
};

}  // namespace modular
}  // namespace vortm

#endif
