#include "modular/StandardTargetAwarePositionWeighter.h"

namespace vortm {
namespace modular {

using analyzer::Token;

namespace {

// How much of a target's influence survives crossing a token of this type.
double decayAcross(int type, double decay) {
  switch (type) {
    case Token::TT_CLAUSE_PUNC:
      return decay / 1.5;
    case Token::TT_SEN_PUNC:
    case Token::TT_QUESTION_MARK:
      return decay * 0.5;
    case Token::TT_NEWLINE:
      return decay / 3.0;
    default:
      return decay;
  }
}

}  // namespace

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
  weights.assign(n, 0.0);
  // A one-token text has nothing around its target to weigh.
  if (targets.empty() || n == 1) return true;

  const double lastOffset = static_cast<double>(tokens.back().endOffset);
  for (size_t i = 0; i < n; ++i) {
    // Only tokens the analyzer tagged as target candidates count; the same
    // text elsewhere is an ordinary word.
    if (tokens[i].tag != Token::TG_TARGET) continue;
    for (size_t t = 0; t < targets.size(); ++t) {
      if (tokens[i].term == targets[t]) {
        propagate(tokens, tokens[i], static_cast<int>(i), lastOffset, weights);
        break;
      }
    }
  }

  double sum = 0.0;
  for (size_t i = 0; i < n; ++i) sum += weights[i];
  if (sum > 1e-05) {
    for (size_t i = 0; i < n; ++i) weights[i] = weights[i] / sum * static_cast<double>(n);
  }
  return true;
}

void StandardTargetAwarePositionWeighter::propagate(std::vector<Token>& tokens, const Token& /*target*/, int index,
                                                    double /*lastOffset*/, std::vector<double>& weights) {
  const int n = static_cast<int>(tokens.size());
  weights[index] += 1.0;
  const double length = n + 0.1;

  // A boundary token already lies behind the boundary, so its own decay is
  // updated before it is weighted.
  double decay = 1.0;
  for (int k = index - 1; k >= 0; --k) {
    decay = decayAcross(tokens[k].type, decay);
    weights[k] += (1.0 - ((index + 0.1 - k) / length)) * decay;
  }
  decay = 1.0;
  for (int k = index + 1; k < n; ++k) {
    decay = decayAcross(tokens[k].type, decay);
    weights[k] += (1.0 - ((k + 0.1 - index) / length)) * decay;
  }
}

}  // namespace modular
}  // namespace vortm
