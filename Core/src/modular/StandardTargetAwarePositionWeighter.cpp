#include "modular/StandardTargetAwarePositionWeighter.h"

namespace vortm {
namespace modular {

using analyzer::Token;

bool StandardTargetAwarePositionWeighter::config(const configure::Parameter& /*param*/) { return true; }

bool StandardTargetAwarePositionWeighter::weighting(std::vector<Token>& tokens, std::vector<double>& weights) {
  weights.clear();
  if (tokens.empty()) return true;
  weights.assign(tokens.size(), 1.0);
  return true;
}

bool StandardTargetAwarePositionWeighter::weighting(std::vector<Token>& tokens, std::vector<std::string>& targets,
                                                    std::vector<double>& weights) {
  weights.clear();
  const size_t n = tokens.size();
  if (n == 0) return true;
  thread_local std::vector<size_t> targetAt;
  targetAt.clear();
  for (size_t i = 0; i < n && !targets.empty(); ++i) {
    // Only tokens the analyzer tagged as target candidates count; the same
    // text elsewhere is an ordinary word.
    if (tokens[i].tag != Token::TG_TARGET) continue;
    for (size_t t = 0; t < targets.size(); ++t) {
      if (tokens[i].term == targets[t]) {
        targetAt.push_back(i);
        break;
      }
    }
  }
  weighAroundTargets(n, targetAt, [&tokens](int k) { return static_cast<int>(tokens[k].type); }, weights);
  return true;
}

void StandardTargetAwarePositionWeighter::propagate(std::vector<Token>& tokens, const Token& /*target*/, int index,
                                                    double /*lastOffset*/, std::vector<double>& weights) {
  spread(tokens.size(), index, [&tokens](int k) { return static_cast<int>(tokens[k].type); }, weights);
}

}  // namespace modular
}  // namespace vortm
