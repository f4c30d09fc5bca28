#ifndef VORTM_MODULAR_INNERSENSENTIORIENTEDPOSITIONWEIGHTER_H
#define VORTM_MODULAR_INNERSENSENTIORIENTEDPOSITIONWEIGHTER_H

#include "modular/SentiOrientedPositionWeighter.h"

namespace vortm {
namespace modular {

// Adds a weighting inside each sentence, rising from 0.75 towards 1.25 with
// the word's place in it. Nothing builds this class yet; the weights it
// writes are also printed on standard output, one line each.
class InnerSenSentiOrientedPositionWeighter : public virtual SentiOrientedPositionWeighter {
 public:
  ~InnerSenSentiOrientedPositionWeighter() override {}
  virtual bool sentiPositionalWeighting(std::vector<analyzer::Token>& tokens, std::vector<double>& weights);
};

}  // namespace modular
}  // namespace vortm

#endif
