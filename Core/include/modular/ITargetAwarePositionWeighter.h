#ifndef VORTM_MODULAR_ITARGETAWAREPOSITIONWEIGHTER_H
#define VORTM_MODULAR_ITARGETAWAREPOSITIONWEIGHTER_H

#include <string>
#include <vector>

#include "modular/IPositionWeighter.h"

namespace vortm {
namespace modular {

// A weighter that is also told the targets of the text, and weighs tokens by
// their nearness to them.
class ITargetAwarePositionWeighter : public virtual IPositionWeighter {
 public:
  ~ITargetAwarePositionWeighter() override {}
  bool weighting(std::vector<analyzer::Token>& tokens, std::vector<double>& weights) override = 0;
  virtual bool weighting(std::vector<analyzer::Token>& tokens, std::vector<std::string>& targets,
                         std::vector<double>& weights) = 0;
};

}  // namespace modular
}  // namespace vortm

#endif
