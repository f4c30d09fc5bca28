#ifndef VORTM_MODULAR_IDOCVECTORBUILDER_H
#define VORTM_MODULAR_IDOCVECTORBUILDER_H

#include <vector>

#include "analyzer/Token.h"
#include "common/AutoPtr.h"
#include "configure/Configurable.h"
#include "modular/Text.h"
#include "utility/MySparseVector.h"

namespace vortm {
namespace modular {

// Turns the tokens of a document into a sparse vector. A configured builder
// only reads its state, so several threads may build at once.
class IDocVectorBuilder : public configure::Configurable {
 public:
  virtual ~IDocVectorBuilder() {}
  bool config(const configure::Parameter& param) override = 0;
  virtual bool buildDocVec(std::vector<analyzer::Token>& tokens, utility::MySparseVector<double, int>& docVec) = 0;
  // Builders that cannot take ready-weighted terms keep this refusal.
  virtual bool buildDocVec(Text& text, utility::MySparseVector<double, int>& docVec);
  virtual int getFeatureCount() = 0;

  // Builds the builder named by "identifier" in `param` and configures it
  // with the "param" element; `builder` is null unless one was created.
  static bool configDocVectorBuilder(const configure::Parameter& param, common::AutoPtr<IDocVectorBuilder>& builder);
};

}  // namespace modular
}  // namespace vortm

#endif
