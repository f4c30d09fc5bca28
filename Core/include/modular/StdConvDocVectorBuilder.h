#ifndef VORTM_MODULAR_STDCONVDOCVECTORBUILDER_H
#define VORTM_MODULAR_STDCONVDOCVECTORBUILDER_H

#include <string>
#include <vector>

#include "common/InstanceCreator.h"
#include "modular/CNNDocVectorBuilder.h"

namespace vortm {
namespace modular {

// One convolution stage over the word embeddings with several filter widths,
// k-max pooling over time and a fully connected tanh layer.
class StdConvDocVectorBuilder : public CNNDocVectorBuilder {
 public:
  StdConvDocVectorBuilder();
  ~StdConvDocVectorBuilder() override;

  bool readModel(const std::string& path) override;
  bool buildDocVec(std::vector<analyzer::Token>& tokens, utility::MySparseVector<double, int>& docVec) override;
  using CNNDocVectorBuilder::buildDocVec;

  int getPoolSize() const { return poolSize; }
  int getFilterCount() const { return filterCount; }
  unsigned int getPooledSize() const { return pooledSize; }
  int getMinLength() const { return minLength; }

 private:
  void clearModel();

  int poolSize;
  int filterCount;
  unsigned int pooledSize;
  int minLength;
  std::vector<ConvLayerParam> layers;
  Eigen::MatrixXd* outMatrix;
  Eigen::VectorXd* outBias;
};

VORTM_DECLARE_CREATOR(StdConvDocVectorBuilderCreator, IDocVectorBuilder, StdConvDocVectorBuilder, "std_conv");

}  // namespace modular
}  // namespace vortm

#endif
