#include "modular/StdConvDocVectorBuilder.h"

#include <algorithm>
#include <fstream>
#include <iostream>

namespace vortm {
namespace modular {

StdConvDocVectorBuilder::StdConvDocVectorBuilder()
    : poolSize(0), filterCount(0), pooledSize(0), minLength(0), outMatrix(nullptr), outBias(nullptr) {}

StdConvDocVectorBuilder::~StdConvDocVectorBuilder() { clearModel(); }

void StdConvDocVectorBuilder::clearModel() {
  freeLayers(layers);
  delete outMatrix;
  delete outBias;
  outMatrix = nullptr;
  outBias = nullptr;
}

bool StdConvDocVectorBuilder::readModel(const std::string& path) {
  clearModel();
  std::ifstream in(path.c_str());
  if (!in) return false;
  int layerCount = 0;
  if (!(in >> poolSize) || poolSize < 1) return false;
  // A filter count of 0 is allowed (the network then rests on its biases);
  // a negative one cannot size a matrix.
  if (!(in >> filterCount) || filterCount < 0) return false;
  if (!(in >> featureCount) || featureCount < 3) return false;
  if (!(in >> layerCount) || layerCount < 1 || layerCount > 4096) return false;
  std::vector<int> widths(layerCount);
  int widest = 0;
  for (int l = 0; l < layerCount; ++l) {
    if (!(in >> widths[l]) || widths[l] < 1 || widths[l] > 65536) return false;
    widest = std::max(widest, widths[l]);
  }
  long long pooled = static_cast<long long>(poolSize) * filterCount * layerCount;
  if (poolSize > (1 << 24) || !sizeOk(featureCount, pooled)) return false;
  pooledSize = static_cast<unsigned int>(pooled);
  minLength = poolSize - 1 + widest;
  // Every document is padded to minLength positions: keep that bounded.
  if (!sizeOk(minLength, wordDim)) return false;
  for (int l = 0; l < layerCount; ++l)
    if (!readFilter(in, widths[l], filterCount, static_cast<long long>(widths[l]) * wordDim, layers)) return false;
  if (!readBiases(in, layers)) return false;
  std::cout << featureCount << " " << pooledSize << " " << poolSize << std::endl;
  return readOutputLayer(in, featureCount, pooledSize, outMatrix, outBias);
}

bool StdConvDocVectorBuilder::buildDocVec(std::vector<analyzer::Token>& tokens,
                                          utility::MySparseVector<double, int>& docVec) {
  if (!initialized) return false;
  docVec.clear();
  if (tokens.empty()) return true;
  const int n = static_cast<int>(tokens.size());
  const int positions = std::max(n, minLength);
  // Embeddings side by side, one position after another; short documents
  // are padded with zero vectors at the end.
  Eigen::VectorXd text = Eigen::VectorXd::Zero(static_cast<Eigen::Index>(positions) * wordDim);
  std::string base;
  for (int i = 0; i < n; ++i) {
    const std::string& term = tokens[i].term;
    int row = findWord(term);
    double sign = 1.0;
    if (row < 0 && term.compare(0, 4, "NOT_") == 0) {
      // A negated word counts as the opposite of its base word.
      base.assign(term, 4, std::string::npos);
      row = findWord(base);
      sign = -1.0;
    }
    if (row < 0) continue;
    const std::vector<double>& vec = wordVecs[row];
    double* slot = text.data() + static_cast<Eigen::Index>(i) * wordDim;
    for (int d = 0; d < wordDim; ++d) slot[d] = sign * vec[d];
  }
  Eigen::VectorXd features(pooledSize);
  Eigen::Index write = 0;
  std::vector<char> taken;
  std::vector<double> scratch;
  // One buffer for the outputs of every layer: the narrowest window has the
  // most positions.
  Eigen::MatrixXd y(filterCount, positions);
  for (size_t l = 0; l < layers.size(); ++l) {
    const ConvLayerParam& layer = layers[l];
    const int width = layer.windowSize * wordDim;
    const int columns = positions + 1 - layer.windowSize;
    // Each window of positions is a contiguous slice of `text`, so the
    // windows can be mapped as overlapping columns without a copy, and the
    // whole convolution of a layer is one matrix product.
    Eigen::Map<const Eigen::MatrixXd, 0, Eigen::OuterStride<> > windows(text.data(), width, columns,
                                                                         Eigen::OuterStride<>(wordDim));
    auto out = y.leftCols(columns);
    out.noalias() = (*layer.filter) * windows;
    out.colwise() += *layer.bias;
    for (int f = 0; f < filterCount; ++f)
      kMaxActivatedRow(y, f, columns, poolSize, taken, scratch, [&](int, double value) { features(write++) = value; });
  }
  finishDocVec(*outMatrix, *outBias, features, docVec);
  return true;
}

}  // namespace modular
}  // namespace vortm
