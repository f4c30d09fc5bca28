#include "modular/TargetAwareLexcionSentiScorers.h"

#include "configure/Parameter.h"
#include "modular/SentiOrientedTargetAwarePositionWeighter.h"

namespace vortm {
namespace modular {

using analyzer::Token;
using configure::Parameter;

template <class Scorer>
const std::string TargetAwareLexcionSentiScorer<Scorer>::PARAM_TARGET_AWARE_POSITION_WEIGHTER =
    "target_aware_position_weighter";

template <class Scorer>
bool TargetAwareLexcionSentiScorer<Scorer>::config(const Parameter& param) {
  if (!Scorer::config(param)) return false;
  if (m_targetAwarePositionWeighterPtr) return true;
  m_targetAwarePositionWeighterPtr = new SentiOrientedTargetAwarePositionWeighter();
  return m_targetAwarePositionWeighterPtr->config(param[PARAM_TARGET_AWARE_POSITION_WEIGHTER]);
}

template <class Scorer>
bool TargetAwareLexcionSentiScorer<Scorer>::getSentiScore(std::vector<Token>& tokens, double& score) {
  return Scorer::getSentiScore(tokens, score);
}

template <class Scorer>
bool TargetAwareLexcionSentiScorer<Scorer>::weighting(std::vector<Token>& tokens, std::vector<double>& weights) {
  return (*m_targetAwarePositionWeighterPtr).weighting(tokens, m_targets, weights);
}

template class TargetAwareLexcionSentiScorer<StandardLexcionSentiScorer>;
template class TargetAwareLexcionSentiScorer<WeightedLexcionSentiScorer>;

}  // namespace modular
}  // namespace vortm
