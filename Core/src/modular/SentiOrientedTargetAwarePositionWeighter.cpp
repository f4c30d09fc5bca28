#include "modular/SentiOrientedTargetAwarePositionWeighter.h"

namespace vortm {
namespace modular {

using analyzer::Token;

bool SentiOrientedTargetAwarePositionWeighter::config(const configure::Parameter& param) {
  bool sentiOk = SentiOrientedPositionWeighter::config(param);
  bool targetOk = StandardTargetAwarePositionWeighter::config(param);
  return sentiOk && targetOk;
}

bool SentiOrientedTargetAwarePositionWeighter::weighting(std::vector<Token>& tokens, std::vector<double>& weights) {
  return StandardTargetAwarePositionWeighter::weighting(tokens, weights);
}

bool SentiOrientedTargetAwarePositionWeighter::weighting(std::vector<Token>& tokens,
                                                         std::vector<std::string>& targets,
                                                         std::vector<double>& weights) {
  weights.resize(tokens.size(), 0.0);
  if (targets.empty()) return true;
  StandardTargetAwarePositionWeighter::weighting(tokens, targets, weights);
  std::vector<double> oriented;
  SentiOrientedPositionWeighter::weighting(tokens, oriented);
  for (size_t i = 0; i < weights.size() && i < oriented.size(); ++i) weights[i] *= oriented[i];
  return true;
}

}  // namespace modular
}  // namespace vortm
