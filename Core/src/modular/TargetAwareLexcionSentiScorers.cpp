#include "modular/TargetAwareLexcionSentiScorers.h"

#include "configure/Parameter.h"
#include "modular/SentiOrientedTargetAwarePositionWeighter.h"

namespace vortm {
namespace modular {

using analyzer::Token;
using common::AutoPtr;
using configure::Parameter;

const std::string TargetAwareStandardLexcionSentiScorer::PARAM_TARGET_AWARE_POSITION_WEIGHTER =
    "target_aware_position_weighter";
const std::string TargetAwareWeightedLexcionSentiScorer::PARAM_TARGET_AWARE_POSITION_WEIGHTER =
    "target_aware_position_weighter";

namespace {

// Shared by both scorers once their base is configured. A missing element
// leaves the weighter with its defaults.
bool configTargetWeighter(const Parameter& param, const std::string& key,
                          AutoPtr<ITargetAwarePositionWeighter>& weighter) {
  if (weighter) return true;
  weighter = new SentiOrientedTargetAwarePositionWeighter();
  return weighter->config(param[key]);
}

}  // namespace

TargetAwareStandardLexcionSentiScorer::TargetAwareStandardLexcionSentiScorer() {}
TargetAwareStandardLexcionSentiScorer::~TargetAwareStandardLexcionSentiScorer() {}

bool TargetAwareStandardLexcionSentiScorer::config(const Parameter& param) {
  if (!StandardLexcionSentiScorer::config(param)) return false;
  return configTargetWeighter(param, PARAM_TARGET_AWARE_POSITION_WEIGHTER, m_targetAwarePositionWeighterPtr);
}

bool TargetAwareStandardLexcionSentiScorer::getSentiScore(std::vector<Token>& tokens, double& score) {
  return StandardLexcionSentiScorer::getSentiScore(tokens, score);
}

bool TargetAwareStandardLexcionSentiScorer::weighting(std::vector<Token>& tokens, std::vector<double>& weights) {
  return (*m_targetAwarePositionWeighterPtr).weighting(tokens, m_targets, weights);
}

TargetAwareWeightedLexcionSentiScorer::TargetAwareWeightedLexcionSentiScorer() {}
TargetAwareWeightedLexcionSentiScorer::~TargetAwareWeightedLexcionSentiScorer() {}

bool TargetAwareWeightedLexcionSentiScorer::config(const Parameter& param) {
  if (!WeightedLexcionSentiScorer::config(param)) return false;
  return configTargetWeighter(param, PARAM_TARGET_AWARE_POSITION_WEIGHTER, m_targetAwarePositionWeighterPtr);
}

bool TargetAwareWeightedLexcionSentiScorer::getSentiScore(std::vector<Token>& tokens, double& score) {
  return WeightedLexcionSentiScorer::getSentiScore(tokens, score);
}

bool TargetAwareWeightedLexcionSentiScorer::weighting(std::vector<Token>& tokens, std::vector<double>& weights) {
  return (*m_targetAwarePositionWeighterPtr).weighting(tokens, m_targets, weights);
}

}  // namespace modular
}  // namespace vortm
