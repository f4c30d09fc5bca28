#ifndef VORTM_MODULAR_STANDARDTARGETAWAREPOSITIONWEIGHTER_H
#define VORTM_MODULAR_STANDARDTARGETAWAREPOSITIONWEIGHTER_H

#include <string>
#include <vector>

#include "analyzer/Token.h"
#include "modular/ITargetAwarePositionWeighter.h"

namespace vortm {
namespace modular {

// Each target word (a token tagged as target whose text is one of the
// targets) spreads weight to both sides, fading with distance and more
// steeply across punctuation. The weights are then scaled to average 1.0.
class StandardTargetAwarePositionWeighter : public virtual ITargetAwarePositionWeighter {
 public:
  ~StandardTargetAwarePositionWeighter() override {}

  bool config(const configure::Parameter& param) override;
  // Without targets every token weighs 1.0.
  bool weighting(std::vector<analyzer::Token>& tokens, std::vector<double>& weights) override;
  bool weighting(std::vector<analyzer::Token>& tokens, std::vector<std::string>& targets,
                 std::vector<double>& weights) override;

  // Adds the influence of the target token at `index` to `weights`, which
  // already holds one entry per token. `lastOffset` is not used.
  void propagate(std::vector<analyzer::Token>& tokens, const analyzer::Token& target, int index, double lastOffset,
                 std::vector<double>& weights);

  // The weights of weighting() for `n` tokens whose target words stand at
  // `targetAt` (ascending), token k being of type typeAt(k); for callers
  // that score a text without making its tokens.
  template <class TypeAt>
  static void weighAroundTargets(size_t n, const std::vector<size_t>& targetAt, TypeAt typeAt,
                                 std::vector<double>& weights) {
    weights.assign(n, 0.0);
    // A one-token text has nothing around its target to weigh.
    if (n <= 1) return;
    for (size_t t = 0; t < targetAt.size(); ++t) spread(n, static_cast<int>(targetAt[t]), typeAt, weights);
    double sum = 0.0;
    for (size_t i = 0; i < n; ++i) sum += weights[i];
    if (sum > 1e-05) {
      for (size_t i = 0; i < n; ++i) weights[i] = weights[i] / sum * static_cast<double>(n);
    }
  }

 private:
  // How much of a target's influence survives crossing a token of this type.
  static double decayAcross(int type, double decay) {
    switch (type) {
      case analyzer::Token::TT_CLAUSE_PUNC:
        return decay / 1.5;
      case analyzer::Token::TT_SEN_PUNC:
      case analyzer::Token::TT_QUESTION_MARK:
        return decay * 0.5;
      case analyzer::Token::TT_NEWLINE:
        return decay / 3.0;
      default:
        return decay;
    }
  }

  template <class TypeAt>
  static void spread(size_t count, int index, TypeAt typeAt, std::vector<double>& weights) {
    const int n = static_cast<int>(count);
    weights[index] += 1.0;
    const double length = n + 0.1;
    // A boundary token already lies behind the boundary, so its own decay is
    // updated before it is weighted.
    double decay = 1.0;
    for (int k = index - 1; k >= 0; --k) {
      decay = decayAcross(typeAt(k), decay);
      weights[k] += (1.0 - ((index + 0.1 - k) / length)) * decay;
    }
    decay = 1.0;
    for (int k = index + 1; k < n; ++k) {
      decay = decayAcross(typeAt(k), decay);
      weights[k] += (1.0 - ((k + 0.1 - index) / length)) * decay;
    }
  }
};

}  // namespace modular
}  // namespace vortm

#endif
