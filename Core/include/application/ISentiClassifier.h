#ifndef VORTM_APPLICATION_ISENTICLASSIFIER_H
#define VORTM_APPLICATION_ISENTICLASSIFIER_H

#include <string>

#include "configure/Configurable.h"

namespace vortm {
namespace application {

// A classifier gives a text a score; positive means positive opinion. It is
// usable once config() has returned true. classify() keeps its working data
// in locals, so a configured classifier may serve several threads, but
// update() must not run beside classify().
class ISentiClassifier : public virtual configure::Configurable {
 public:
  virtual ~ISentiClassifier() {}
  bool config(const configure::Parameter& param) override = 0;
  virtual bool classify(const std::string& text, double& score) = 0;
  virtual bool update(const configure::Parameter& /*param*/) { return true; }
};

}  // namespace application
}  // namespace vortm

#endif
