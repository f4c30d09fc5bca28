#include "modular/StandardPositionWeighter.h"

namespace vortm {
namespace modular {

bool StandardPositionWeighter::weighting(std::vector<analyzer::Token>& tokens, std::vector<double>& weights) {
  if (tokens.empty()) {
    weights.clear();
    return true;
  }
  weights.resize(tokens.size(), 1.0);
  return true;
}

}  // namespace modular
}  // namespace vortm
