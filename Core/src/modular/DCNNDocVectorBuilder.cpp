#include "modular/DCNNDocVectorBuilder.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace vortm {
namespace modular {

namespace {
// Conditions on the caller's arguments: a broken one is a programming error.
void checkPooling(bool ok, const char* what, int line) {
  if (ok) return;
  std::fprintf(stderr, "assertion failed: %s in function %s at %s:%d\n", what, "maxkPooling", __FILE__, line);
  std::abort();
}
}  // namespace

DCNNDocVectorBuilder::DCNNDocVectorBuilder()
    : firstPoolSize(0), secondPoolSize(0), minLength(0), outMatrix(nullptr), outBias(nullptr) {}

DCNNDocVectorBuilder::~DCNNDocVectorBuilder() { clearModel(); }

void DCNNDocVectorBuilder::clearModel() {
  freeLayers(firstLayers);
  freeLayers(secondLayers);
  delete outMatrix;
  delete outBias;
  outMatrix = nullptr;
  outBias = nullptr;
}

bool DCNNDocVectorBuilder::readModel(const std::string& path) {
  clearModel();
  std::ifstream in(path.c_str());
  if (!in) return false;
  int branches = 0;
  if (!(in >> firstPoolSize) || firstPoolSize < 1 || firstPoolSize > 65536) return false;
  if (!(in >> secondPoolSize) || secondPoolSize < 1 || secondPoolSize > 65536) return false;
  if (!(in >> featureCount) || featureCount < 3) return false;
  if (!(in >> branches) || branches < 1 || branches > 4096) return false;
  std::vector<int> firstWidths(branches), secondWidths(branches);
  int widest = 0;
  for (int b = 0; b < branches; ++b) {
    if (!(in >> firstWidths[b]) || firstWidths[b] < 1 || firstWidths[b] > 65536) return false;
    if (!(in >> secondWidths[b]) || secondWidths[b] < 1 || secondWidths[b] > 65536) return false;
    widest = std::max(widest, firstWidths[b]);
  }
  minLength = firstPoolSize - 1 + widest;
  // Documents are padded to minLength positions; outputs have this many columns.
  long long features = static_cast<long long>(wordDim) * secondPoolSize * branches;
  if (!sizeOk(minLength + 1, wordDim) || !sizeOk(featureCount, features)) return false;
  for (int b = 0; b < branches; ++b)
    if (!readFilter(in, firstWidths[b], wordDim, firstWidths[b], firstLayers)) return false;
  if (!readBiases(in, firstLayers)) return false;
  for (int b = 0; b < branches; ++b)
    if (!readFilter(in, secondWidths[b], wordDim, secondWidths[b], secondLayers)) return false;
  if (!readBiases(in, secondLayers)) return false;
  return readOutputLayer(in, featureCount, features, outMatrix, outBias);
}

int DCNNDocVectorBuilder::catenate(std::vector<analyzer::Token>& tokens, std::vector<double>& out) {
  std::vector<int> ids;
  ids.reserve(tokens.size() + 2);
  bool seenKnown = false;
  for (size_t i = 0; i < tokens.size(); ++i) {
    int row = findWord(tokens[i].term);
    if (row >= 0) {
      seenKnown = true;
      ids.push_back(row);
    } else if (seenKnown) {
      // Unknown words keep their place once the text has begun.
      ids.push_back(-1);
    }
  }
  if (ids.empty() || (ids.size() == 1 && ids[0] < 0)) return 0;
  int front = 0;
  int length = static_cast<int>(ids.size());
  while (length + 2 * front < minLength) ++front;
  const int total = length + 2 * front;
  out.assign(static_cast<size_t>(total) * wordDim, 0.0);
  for (int p = 0; p < length; ++p) {
    if (ids[p] < 0) continue;
    const std::vector<double>& vec = wordVecs[ids[p]];
    for (int d = 0; d < wordDim; ++d) out[static_cast<size_t>(d) * total + front + p] = vec[d];
  }
  return total;
}

void DCNNDocVectorBuilder::maxkPooling(Eigen::MatrixXd& in, Eigen::MatrixXd& out, int columns, int k) {
  checkPooling(in.rows() >= wordDim && out.rows() >= wordDim, "rows >= wordDim", __LINE__);
  checkPooling(columns <= in.cols() && k <= out.cols(), "columns <= in.cols() && k <= out.cols()", __LINE__);
  std::vector<char> taken;
  for (int d = 0; d < wordDim; ++d) kMaxRow(in, d, columns, k, taken, [&](int rank, double v) { out(d, rank) = v; });
}

bool DCNNDocVectorBuilder::buildDocVec(std::vector<analyzer::Token>& tokens,
                                       utility::MySparseVector<double, int>& docVec) {
  if (!initialized) return false;
  docVec.clear();
  if (tokens.empty()) return true;
  std::vector<double> text;
  const int length = catenate(tokens, text);
  if (length == 0) return true;
  Eigen::VectorXd features(static_cast<Eigen::Index>(wordDim) * secondPoolSize * firstLayers.size());
  Eigen::Index write = 0;
  Eigen::MatrixXd pooled1(wordDim, firstPoolSize);
  Eigen::MatrixXd pooled2(wordDim, secondPoolSize);
  std::vector<char> taken;
  std::vector<double> scratch;
  // Values before the non-linearity; only the pooled ones are activated.
  Eigen::MatrixXd a(wordDim, length);
  Eigen::MatrixXd dmat(wordDim, firstPoolSize);
  for (size_t b = 0; b < firstLayers.size(); ++b) {
    const ConvLayerParam& first = firstLayers[b];
    const ConvLayerParam& second = secondLayers[b];
    const int columns = length + 1 - first.windowSize;
    pooled1.setZero();
    for (int d = 0; d < wordDim; ++d) {
      const double* row = &text[static_cast<size_t>(d) * length];
      for (int c = 0; c < columns; ++c) {
        double sum = 0.0;
        for (int i = 0; i < first.windowSize; ++i) sum += row[c + i] * (*first.filter)(d, i);
        a(d, c) = sum + (*first.bias)(d);
      }
      kMaxActivatedRow(a, d, columns, firstPoolSize, taken, scratch, [&](int rank, double v) { pooled1(d, rank) = v; });
    }
    // The second convolution runs over the pooled values in rank order,
    // which is the order the weights were trained on.
    const int columns2 = std::max(0, firstPoolSize + 1 - second.windowSize);
    pooled2.setZero();
    for (int d = 0; d < wordDim; ++d) {
      for (int c = 0; c < columns2; ++c) {
        double sum = 0.0;
        for (int i = 0; i < second.windowSize; ++i) sum += pooled1(d, c + i) * (*second.filter)(d, i);
        dmat(d, c) = sum + (*second.bias)(d);
      }
      kMaxActivatedRow(dmat, d, columns2, secondPoolSize, taken, scratch,
                       [&](int rank, double v) { pooled2(d, rank) = v; });
    }
    for (int d = 0; d < wordDim; ++d)
      for (int r = 0; r < secondPoolSize; ++r) features(write++) = pooled2(d, r);
  }
  finishDocVec(*outMatrix, *outBias, features, docVec);
  return true;
}

}  // namespace modular
}  // namespace vortm
