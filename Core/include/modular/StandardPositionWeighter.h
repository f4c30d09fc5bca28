#ifndef VORTM_MODULAR_STANDARDPOSITIONWEIGHTER_H
#define VORTM_MODULAR_STANDARDPOSITIONWEIGHTER_H

#include "modular/IPositionWeighter.h"

namespace vortm {
namespace modular {

// Every token weighs the same.
class StandardPositionWeighter : public virtual IPositionWeighter {
 public:
  ~StandardPositionWeighter() override {}
  bool weighting(std::vector<analyzer::Token>& tokens, std::vector<double>& weights) override;
};

}  // namespace modular
}  // namespace vortm

#endif
