#ifndef VORTM_APPLICATION_SENTICLASSIFIERFACTORY_H
#define VORTM_APPLICATION_SENTICLASSIFIERFACTORY_H

#include <string>

#include "application/ISentiClassifier.h"
#include "common/AutoPtr.h"
#include "configure/Parameter.h"

namespace vortm {
namespace application {

// Turns an identifier into a configured classifier, or a null pointer.
class SentiClassifierFactory {
 public:
  static common::AutoPtr<ISentiClassifier> getSentiClassifier(const std::string& identifier,
                                                              const configure::Parameter& parameter);
  static common::AutoPtr<ISentiClassifier> getSentiClassifier(const std::string& identifier,
                                                              const std::string& configFile);
};

}  // namespace application
}  // namespace vortm

#endif
