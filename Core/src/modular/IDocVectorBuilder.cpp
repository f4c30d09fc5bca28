#include "modular/IDocVectorBuilder.h"

#include <iostream>
#include <string>

#include "common/CreatorRegister.h"
#include "common/InstanceCreator.h"
#include "configure/Parameter.h"

namespace vortm {
namespace modular {

bool IDocVectorBuilder::buildDocVec(Text& /*text*/, utility::MySparseVector<double, int>& /*docVec*/) {
  std::cout << "Unsupoorted Method: buildDocVec(Text &text, MySparseVector<double> &docVec)" << std::endl;
  return false;
}

bool IDocVectorBuilder::configDocVectorBuilder(const configure::Parameter& param,
                                               common::AutoPtr<IDocVectorBuilder>& builder) {
  common::gfn_creatorRegister();
  builder = common::AutoPtr<IDocVectorBuilder>();
  std::string identifier;
  if (!param["identifier"].getStringValue(identifier)) return false;
  std::cout << " docVecBuilderIdentifier " << identifier << std::endl;
  IDocVectorBuilder* created = common::InstanceCreator<IDocVectorBuilder>::getCreation(identifier);
  if (created != nullptr) builder = common::AutoPtr<IDocVectorBuilder>(created, true);
  if (!builder) return false;
  return builder->config(param["param"]);
}

}  // namespace modular
}  // namespace vortm
