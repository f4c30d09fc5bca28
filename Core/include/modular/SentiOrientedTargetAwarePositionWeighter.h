#ifndef VORTM_MODULAR_SENTIORIENTEDTARGETAWAREPOSITIONWEIGHTER_H
#define VORTM_MODULAR_SENTIORIENTEDTARGETAWAREPOSITIONWEIGHTER_H

#include "modular/SentiOrientedPositionWeighter.h"
#include "modular/StandardTargetAwarePositionWeighter.h"

namespace vortm {
namespace modular {

// The target weights multiplied by the sentiment-oriented ones.
class SentiOrientedTargetAwarePositionWeighter : public virtual SentiOrientedPositionWeighter,
                                                 public virtual StandardTargetAwarePositionWeighter {
 public:
  ~SentiOrientedTargetAwarePositionWeighter() override {}

  bool config(const configure::Parameter& param) override;
  // Without targets: all 1.0, with no sentiment-oriented factor.
  bool weighting(std::vector<analyzer::Token>& tokens, std::vector<double>& weights) override;
  bool weighting(std::vector<analyzer::Token>& tokens, std::vector<std::string>& targets,
                 std::vector<double>& weights) override;
};

}  // namespace modular
}  // namespace vortm

#endif
