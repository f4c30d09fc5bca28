#ifndef VORTM_MODULAR_DCNNDOCVECTORBUILDER_H
#define VORTM_MODULAR_DCNNDOCVECTORBUILDER_H

#include <string>
#include <vector>

#include "common/InstanceCreator.h"
#include "modular/CNNDocVectorBuilder.h"

namespace vortm {
namespace modular {

// The deep variant: per embedding dimension, in several parallel branches,
// a narrow one-dimensional convolution, k-max pooling, a second convolution
// over the pooled values and k-max pooling again; then a fully connected
// tanh layer. Pooling sizes are fixed by the model, and the dimensions are
// never folded together.
class DCNNDocVectorBuilder : public CNNDocVectorBuilder {
 public:
  DCNNDocVectorBuilder();
  ~DCNNDocVectorBuilder() override;

  bool readModel(const std::string& path) override;
  bool buildDocVec(std::vector<analyzer::Token>& tokens, utility::MySparseVector<double, int>& docVec) override;
  using CNNDocVectorBuilder::buildDocVec;

  // Lays the embeddings of the tokens out dimension by dimension (row d
  // holds dimension d at every position), padded on both sides up to
  // minLength; returns the number of positions, or 0 when no word is known.
  int catenate(std::vector<analyzer::Token>& tokens, std::vector<double>& out);
  // For each of the wordDim rows of `in`, the k greatest of its first
  // `columns` values, greatest first, into the same row of `out`.
  void maxkPooling(Eigen::MatrixXd& in, Eigen::MatrixXd& out, int columns, int k);

  int getMinLength() const { return minLength; }

 private:
  void clearModel();

  int firstPoolSize;
  int secondPoolSize;
  int minLength;
  std::vector<ConvLayerParam> firstLayers;
  std::vector<ConvLayerParam> secondLayers;
  Eigen::MatrixXd* outMatrix;
  Eigen::VectorXd* outBias;
};

VORTM_DECLARE_CREATOR(DCNNDocVectorBuilderCreator, IDocVectorBuilder, DCNNDocVectorBuilder, "dcnn");

}  // namespace modular
}  // namespace vortm

#endif
