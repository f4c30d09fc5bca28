#include "application/SentiClassifierFactory.h"

#include "common/CreatorRegister.h"
#include "common/InstanceCreator.h"
#include "common/Logger.h"
#include "configure/BasicParamParser.h"

namespace vortm {
namespace application {

using common::AutoPtr;
using common::gfn_pLoggerInstance;

AutoPtr<ISentiClassifier> SentiClassifierFactory::getSentiClassifier(const std::string& identifier,
                                                                     const configure::Parameter& parameter) {
  common::gfn_creatorRegister();
  AutoPtr<ISentiClassifier> classifier(common::InstanceCreator<ISentiClassifier>::getCreation(identifier), true);
  if (classifier && classifier->config(parameter)) return classifier;
  // The callers report an unknown identifier or a failed config themselves.
  return AutoPtr<ISentiClassifier>();
}

AutoPtr<ISentiClassifier> SentiClassifierFactory::getSentiClassifier(const std::string& identifier,
                                                                     const std::string& configFile) {
  configure::BasicParamParser parser;
  AutoPtr<configure::Parameter> root;
  if (!parser.doParse(configFile, root)) {
    gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Parse Params with Config File" + configFile);
    return AutoPtr<ISentiClassifier>();
  }
  return getSentiClassifier(identifier, *root);
}

}  // namespace application
}  // namespace vortm
