#include "modular/CNNDocVectorBuilder.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "common/Logger.h"
#include "configure/Parameter.h"
#include "utility/Utility.h"

namespace vortm {
namespace modular {

using common::gfn_pLoggerInstance;
using utility::MySparseVector;

const std::string CNNDocVectorBuilder::PARAM_WORD_VEC_FILE = "word_vec_file";
const std::string CNNDocVectorBuilder::PARAM_MODEL_FILE = "model_file";
const std::string CNNDocVectorBuilder::PARAM_NORMALIZE_METHOD = "normalize_method";

CNNDocVectorBuilder::CNNDocVectorBuilder() : wordDim(0), featureCount(0), initialized(false), normMethod("l2norm") {}

CNNDocVectorBuilder::~CNNDocVectorBuilder() {}

bool CNNDocVectorBuilder::config(const configure::Parameter& param) {
  std::string path;
  if (!param[PARAM_WORD_VEC_FILE].getStringValue(path) || !loadWordVec(path)) {
    gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Load Word Vec from " + path);
    return false;
  }
  path.clear();
  if (!param[PARAM_MODEL_FILE].getStringValue(path) || !readModel(path)) {
    gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Load Model from " + path);
    return false;
  }
  normMethod = "l2norm";
  param[PARAM_NORMALIZE_METHOD].getStringValue(normMethod);
  initialized = true;
  return true;
}

bool CNNDocVectorBuilder::loadWordVec(const std::string& path) {
  std::ifstream in(path.c_str());
  if (!in) return false;
  std::string line;
  std::vector<std::string> fields;
  if (!std::getline(in, line)) return false;
  utility::Utility::strTokenize(line, fields, ' ');
  if (fields.size() != 2) return false;
  // A dimension of 1 is refused, and so is anything that would make every
  // later row absurdly long.
  long dim = std::strtol(fields[1].c_str(), nullptr, 10);
  if (dim <= 1 || dim > 100000) return false;
  wordDim = static_cast<int>(dim);
  std::cout << " word dim  " << wordDim << std::endl;
  wordVecs.clear();
  wordIds.clear();
  while (std::getline(in, line)) {
    fields.clear();
    utility::Utility::strTokenize(line, fields, ' ');
    // Blank lines carry no word. A row short of numbers is refused: it
    // would mean a broken file, and it keeps a forged dimension from
    // costing more memory than the file itself.
    if (fields.empty()) continue;
    if (static_cast<long>(fields.size()) <= dim) return false;
    std::vector<double> row(wordDim);
    for (int d = 0; d < wordDim; ++d) row[d] = std::strtod(fields[d + 1].c_str(), nullptr);
    wordIds[fields[0]] = static_cast<unsigned int>(wordVecs.size());
    wordVecs.push_back(std::move(row));
  }
  return true;
}

int CNNDocVectorBuilder::findWord(const std::string& word) const {
  std::map<std::string, unsigned int>::const_iterator it = wordIds.find(word);
  return it == wordIds.end() ? -1 : static_cast<int>(it->second);
}

double CNNDocVectorBuilder::activate(double x) {
  double ep = std::exp(x);
  double en = std::exp(-x);
  return (ep - en) / (ep + en);
}

void CNNDocVectorBuilder::l2Norm(MySparseVector<double, int>& docVec) {
  double sum = 0.0;
  for (int i = 0; i < featureCount; ++i) {
    double v = docVec.getValueById(i);
    sum += v * v;
  }
  if (!(sum > 1e-05)) return;
  double norm = std::sqrt(sum);
  for (int i = 0; i < docVec.size(); ++i) {
    std::pair<int, double*> item = docVec.getIdValuePairByIndex(i);
    if (item.second == nullptr) throw std::runtime_error("null point error");
    *item.second /= norm;
  }
}

bool CNNDocVectorBuilder::sizeOk(long long rows, long long cols) {
  const long long kMaxValues = 1LL << 22;
  if (rows < 0 || cols < 0 || rows > kMaxValues || cols > kMaxValues) return false;
  return rows == 0 || cols <= kMaxValues / rows;
}

void CNNDocVectorBuilder::freeLayers(std::vector<ConvLayerParam>& layers) {
  for (size_t i = 0; i < layers.size(); ++i) {
    delete layers[i].filter;
    delete layers[i].bias;
  }
  layers.clear();
}

bool CNNDocVectorBuilder::readFilter(std::istream& in, int windowSize, long long rows, long long cols,
                                     std::vector<ConvLayerParam>& layers) {
  if (!sizeOk(rows, cols)) return false;
  ConvLayerParam layer;
  layer.windowSize = windowSize;
  layer.filter = new Eigen::MatrixXd(rows, cols);
  layer.bias = nullptr;
  layers.push_back(layer);
  for (Eigen::Index r = 0; r < rows; ++r)
    for (Eigen::Index c = 0; c < cols; ++c)
      if (!(in >> (*layer.filter)(r, c))) return false;
  return true;
}

bool CNNDocVectorBuilder::readBiases(std::istream& in, std::vector<ConvLayerParam>& layers) {
  for (size_t i = 0; i < layers.size(); ++i) {
    int rows = static_cast<int>(layers[i].filter->rows());
    layers[i].bias = new Eigen::VectorXd(rows);
    for (int r = 0; r < rows; ++r)
      if (!(in >> (*layers[i].bias)(r))) return false;
  }
  return true;
}

bool CNNDocVectorBuilder::readOutputLayer(std::istream& in, long long rows, long long cols, Eigen::MatrixXd*& matrix,
                                          Eigen::VectorXd*& bias) {
  delete matrix;
  delete bias;
  bias = nullptr;
  matrix = nullptr;
  if (!sizeOk(rows, cols)) return false;
  matrix = new Eigen::MatrixXd(rows, cols);
  for (Eigen::Index c = 0; c < cols; ++c)
    for (Eigen::Index r = 0; r < rows; ++r)
      if (!(in >> (*matrix)(r, c))) return false;
  bias = new Eigen::VectorXd(rows);
  for (Eigen::Index r = 0; r < rows; ++r)
    if (!(in >> (*bias)(r))) return false;
  return true;
}

void CNNDocVectorBuilder::finishDocVec(const Eigen::MatrixXd& matrix, const Eigen::VectorXd& bias,
                                       const Eigen::VectorXd& features, MySparseVector<double, int>& docVec) {
  Eigen::VectorXd z = matrix * features + bias;
  for (int i = 0; i < featureCount; ++i) docVec[i] = activate(z(i));
  if (normMethod == "l2norm") l2Norm(docVec);
}

}  // namespace modular
}  // namespace vortm
