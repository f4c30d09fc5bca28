#include "modular/IPositionWeighter.h"

namespace vortm {
namespace modular {

bool IPositionWeighter::config(const configure::Parameter& /*param*/) { return true; }

}  // namespace modular
}  // namespace vortm
