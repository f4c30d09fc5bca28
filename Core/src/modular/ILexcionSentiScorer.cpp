#include "modular/ILexcionSentiScorer.h"

#include <string>

#include "common/CreatorRegister.h"
#include "common/InstanceCreator.h"
#include "configure/Parameter.h"

namespace vortm {
namespace modular {

using common::AutoPtr;
using configure::Parameter;

bool ILexcionSentiScorer::configLexcionSentiScorer(const Parameter& param, AutoPtr<ILexcionSentiScorer>& out) {
  common::gfn_creatorRegister();
  std::string identifier;
  if (!param["identifier"].getStringValue(identifier)) return false;
  out = common::InstanceCreator<ILexcionSentiScorer>::getCreation(identifier);
  if (!out) return false;
  return out->config(param["param"]);
}

}  // namespace modular
}  // namespace vortm
