#ifndef VORTM_MODULAR_IPOSITIONWEIGHTER_H
#define VORTM_MODULAR_IPOSITIONWEIGHTER_H

#include <vector>

#include "analyzer/Token.h"
#include "configure/Configurable.h"

namespace vortm {
namespace modular {

// Gives every token of a text a weight by where it stands. The output always
// ends with one entry per token; callers pass an empty vector. A weighter
// holds only its settings, so one configured object serves any number of
// texts and threads.
class IPositionWeighter : public virtual configure::Configurable {
 public:
  virtual ~IPositionWeighter() {}
  // Nothing to read by default.
  bool config(const configure::Parameter& param) override;
  // Always true: there is no input a weighter rejects.
  virtual bool weighting(std::vector<analyzer::Token>& tokens, std::vector<double>& weights) = 0;
};

}  // namespace modular
}  // namespace vortm

#endif
