#ifndef VORTM_MODULAR_TARGETAWARELEXCIONSENTISCORERS_H
#define VORTM_MODULAR_TARGETAWARELEXCIONSENTISCORERS_H

#include <string>
#include <vector>

#include "common/AutoPtr.h"
#include "common/InstanceCreator.h"
#include "modular/ITargetAwareLexcionSentiScorer.h"
#include "modular/ITargetAwarePositionWeighter.h"
#include "modular/StandardLexcionSentiScorer.h"
#include "modular/WeightedLexcionSentiScorer.h"

namespace vortm {
namespace modular {

// The scoring of a lexicon scorer, with weights that spread out from the
// target words. The plain weighter of the base stays configured but unused.
// Built for the standard and the weighted scorer only (see the .cpp).
template <class Scorer>
class TargetAwareLexcionSentiScorer : public virtual Scorer, public virtual ITargetAwareLexcionSentiScorer {
 public:
  // A missing target_aware_position_weighter element leaves the weighter
  // with its defaults.
  bool config(const configure::Parameter& param) override;
  bool getSentiScore(std::vector<analyzer::Token>& tokens, double& score) override;
  using ITargetAwareLexcionSentiScorer::getSentiScore;
  bool weighting(std::vector<analyzer::Token>& tokens, std::vector<double>& weights) override;

  static const std::string PARAM_TARGET_AWARE_POSITION_WEIGHTER;

 protected:
  common::AutoPtr<ITargetAwarePositionWeighter> m_targetAwarePositionWeighterPtr;
};

class TargetAwareStandardLexcionSentiScorer : public TargetAwareLexcionSentiScorer<StandardLexcionSentiScorer> {};

class TargetAwareWeightedLexcionSentiScorer : public TargetAwareLexcionSentiScorer<WeightedLexcionSentiScorer> {};

VORTM_DECLARE_CREATOR(TargetAwareStandardLexcionSentiScorerCreator, ITargetAwareLexcionSentiScorer,
                      TargetAwareStandardLexcionSentiScorer, "target_aware_std_lexcion_senti_scorer");
VORTM_DECLARE_CREATOR(TargetAwareWeightedLexcionSentiScorerCreator, ITargetAwareLexcionSentiScorer,
                      TargetAwareWeightedLexcionSentiScorer, "target_aware_weighted_lexcion_senti_scorer");

}  // namespace modular
}  // namespace vortm

#endif
