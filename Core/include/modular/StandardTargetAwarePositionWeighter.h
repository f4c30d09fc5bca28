#ifndef VORTM_MODULAR_STANDARDTARGETAWAREPOSITIONWEIGHTER_H
#define VORTM_MODULAR_STANDARDTARGETAWAREPOSITIONWEIGHTER_H

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
};

}  // namespace modular
}  // namespace vortm

#endif
