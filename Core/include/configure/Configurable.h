#ifndef VORTM_CONFIGURE_CONFIGURABLE_H
#define VORTM_CONFIGURE_CONFIGURABLE_H

namespace vortm {
namespace configure {

class Parameter;

// Base of every component that is set up from a block of the parameter tree.
// config() receives the component's own block; keys it lacks resolve upwards
// through the enclosing blocks.
class Configurable {
 public:
  virtual ~Configurable() {}
  virtual bool config(const Parameter& param) = 0;
};

}  // namespace configure
}  // namespace vortm

#endif
