#ifndef VORTM_MODULAR_CNNDOCVECTORBUILDER_H
#define VORTM_MODULAR_CNNDOCVECTORBUILDER_H

#include <Eigen/Dense>
#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "modular/IDocVectorBuilder.h"

namespace vortm {
namespace modular {

// Frame of the convolutional builders: word embeddings, the output
// non-linearity and the final normalisation. Subclasses read their own
// model file and run their own network. After config() everything is
// read-only and each build works on locals, so threads may share a builder.
class CNNDocVectorBuilder : public IDocVectorBuilder {
 public:
  struct ConvLayerParam {
    int windowSize;
    Eigen::MatrixXd* filter;
    Eigen::VectorXd* bias;
  };

  CNNDocVectorBuilder();
  ~CNNDocVectorBuilder() override;

  bool config(const configure::Parameter& param) override;
  bool buildDocVec(std::vector<analyzer::Token>& tokens, utility::MySparseVector<double, int>& docVec) override = 0;
  using IDocVectorBuilder::buildDocVec;
  int getFeatureCount() override { return featureCount; }
  virtual bool readModel(const std::string& path) = 0;

  bool loadWordVec(const std::string& path);
  // tanh written out with exponentials: huge arguments give NaN rather than
  // saturating, which trained models never meet.
  static double activate(double x);
  void l2Norm(utility::MySparseVector<double, int>& docVec);

  int getWordDim() const { return wordDim; }
  size_t getWordCount() const { return wordVecs.size(); }
  // Row of `word` in the embeddings, or -1.
  int findWord(const std::string& word) const;

  static const std::string PARAM_WORD_VEC_FILE;
  static const std::string PARAM_MODEL_FILE;
  static const std::string PARAM_NORMALIZE_METHOD;

 protected:
  // Refuses a matrix whose forged dimensions would need an absurd amount of
  // memory before a single value has been read.
  static bool sizeOk(long long rows, long long cols);
  // Frees the matrices of `layers` and empties it.
  static void freeLayers(std::vector<ConvLayerParam>& layers);
  // Appends a layer whose filter is rows x cols, read row by row, then
  // nothing else; the bias is read later by readBiases().
  static bool readFilter(std::istream& in, int windowSize, long long rows, long long cols, std::vector<ConvLayerParam>& layers);
  static bool readBiases(std::istream& in, std::vector<ConvLayerParam>& layers);
  // Reads a rows x cols matrix stored column by column, then a vector of
  // `rows` values.
  static bool readOutputLayer(std::istream& in, long long rows, long long cols, Eigen::MatrixXd*& matrix,
                              Eigen::VectorXd*& bias);
  // Keeps the k greatest of the first `columns` values of row `row` of `in`,
  // greatest first, the leftmost first among equals, writing them through
  // `emit(rank, value)`.
  template <class Emit>
  static void kMaxRow(const Eigen::MatrixXd& in, int row, int columns, int k, std::vector<char>& taken, Emit emit) {
    kMaxValues([&](int c) { return in(row, c); }, columns, k, taken, emit);
  }
  // kMaxRow() of activate() of row `row` of `pre`, the values before the
  // non-linearity. activate() rises with its argument, so only the kept
  // values need it: pooling then costs k activations instead of `columns`.
  // A row that reaches where the written-out tanh turns to NaN is activated
  // whole before pooling, so such a row pools exactly as it always did.
  template <class Emit>
  static void kMaxActivatedRow(const Eigen::MatrixXd& pre, int row, int columns, int k, std::vector<char>& taken,
                               std::vector<double>& scratch, Emit emit) {
    bool finite = true;
    for (int c = 0; c < columns && finite; ++c) finite = std::fabs(pre(row, c)) <= 700.0;
    if (finite) {
      kMaxValues([&](int c) { return pre(row, c); }, columns, k, taken,
                 [&](int rank, double v) { emit(rank, activate(v)); });
      return;
    }
    scratch.resize(columns > 0 ? columns : 0);
    for (int c = 0; c < columns; ++c) scratch[c] = activate(pre(row, c));
    kMaxValues([&](int c) { return scratch[c]; }, columns, k, taken, emit);
  }
  template <class Value, class Emit>
  static void kMaxValues(Value value, int columns, int k, std::vector<char>& taken, Emit emit) {
    taken.assign(columns > 0 ? columns : 0, 0);
    for (int rank = 0; rank < k; ++rank) {
      double best = -10000.0;
      int pick = -1;
      for (int c = 0; c < columns; ++c) {
        if (taken[c]) continue;
        const double v = value(c);
        if (pick < 0 || v > best) {
          best = v;
          pick = c;
        }
      }
      if (pick < 0) return;
      taken[pick] = 1;
      emit(rank, best);
    }
  }
  // The output layer: docVec[i] = activate((matrix * features + bias)[i]),
  // then the configured normalisation.
  void finishDocVec(const Eigen::MatrixXd& matrix, const Eigen::VectorXd& bias, const Eigen::VectorXd& features,
                    utility::MySparseVector<double, int>& docVec);

  std::vector<std::vector<double> > wordVecs;
  std::map<std::string, unsigned int> wordIds;
  int wordDim;
  int featureCount;
  bool initialized;
  std::string normMethod;
};

}  // namespace modular
}  // namespace vortm

#endif
