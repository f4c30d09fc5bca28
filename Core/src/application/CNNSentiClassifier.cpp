#include "application/CNNSentiClassifier.h"

#include <cmath>
#include <fstream>

#include "common/CreatorRegister.h"
#include "common/Logger.h"
#include "configure/Parameter.h"

namespace vortm {
namespace application {

using common::AutoPtr;
using common::gfn_pLoggerInstance;
using configure::Parameter;
using modular::CNNDocVectorBuilder;

const std::string CNNSentiClassifier::PARAM_CNN_DOC_VEC_BUILDER = "cnn_doc_vec_builder";
const std::string CNNSentiClassifier::PARAM_TEXT_ANALYZER = "text_analyzer";
const std::string CNNSentiClassifier::PARAM_PARAM_FILE = "param_file";

CNNSentiClassifier::CNNSentiClassifier() : m_pW(nullptr), m_pB(nullptr), m_bReady(false), m_featureCount(0) {}

CNNSentiClassifier::~CNNSentiClassifier() {
  delete m_pW;
  delete m_pB;
}

bool CNNSentiClassifier::config(const Parameter& param) {
  common::gfn_creatorRegister();
  if (!m_docVecBuilderPtr) {
    const Parameter& block = param[PARAM_CNN_DOC_VEC_BUILDER];
    if (block.isNull()) {
      gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "No \"cnn_doc_vec_builder\" item in config file");
      return false;
    }
    std::string identifier;
    block["identifier"].getStringValue(identifier);
    modular::IDocVectorBuilder* created = common::InstanceCreator<modular::IDocVectorBuilder>::getCreation(identifier);
    CNNDocVectorBuilder* builder = dynamic_cast<CNNDocVectorBuilder*>(created);
    // Only the convolutional builders can feed the output layer.
    if (builder == nullptr) delete created;
    if (builder != nullptr) m_docVecBuilderPtr = AutoPtr<CNNDocVectorBuilder>(builder, true);
    if (!m_docVecBuilderPtr || !m_docVecBuilderPtr->config(block["param"])) {
      m_docVecBuilderPtr = AutoPtr<CNNDocVectorBuilder>();
      gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Init Doc Vector Builder");
      return false;
    }
  }
  m_featureCount = m_docVecBuilderPtr->getFeatureCount();
  if (!m_textAnalyzerPtr && !modular::TextAnalyzer::configTextAnalyzer(param[PARAM_TEXT_ANALYZER], m_textAnalyzerPtr)) {
    gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Init Text Analyzer");
    return false;
  }
  std::string file;
  if (!param[PARAM_PARAM_FILE].getStringValue(file) || !readParam(file)) {
    gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Load Params from " + file);
    return false;
  }
  m_bReady = true;
  return true;
}

bool CNNSentiClassifier::readParam(const std::string& file) {
  std::ifstream in(file.c_str());
  if (!in) return false;
  delete m_pW;
  delete m_pB;
  m_pB = nullptr;
  m_pW = new Eigen::MatrixXd(2, m_featureCount);
  for (int c = 0; c < m_featureCount; ++c)
    for (int r = 0; r < 2; ++r)
      if (!(in >> (*m_pW)(r, c))) return false;
  m_pB = new Eigen::VectorXd(2);
  return static_cast<bool>(in >> (*m_pB)(0)) && static_cast<bool>(in >> (*m_pB)(1));
}

bool CNNSentiClassifier::classify(const std::string& text, double& score) {
  if (!m_bReady) return false;
  std::vector<analyzer::Token> tokens;
  if (!m_textAnalyzerPtr->tokenizeText(text, tokens, true)) return false;
  return classify(tokens, score);
}

bool CNNSentiClassifier::classify(std::vector<analyzer::Token>& tokens, double& score) {
  if (!m_bReady) return false;
  utility::MySparseVector<double, int> vector;
  if (!m_docVecBuilderPtr->buildDocVec(tokens, vector)) return false;
  Eigen::VectorXd x = Eigen::VectorXd::Zero(m_featureCount);
  for (int i = 0; i < vector.size(); ++i) {
    std::pair<int, double*> item = vector.getIdValuePairByIndex(i);
    if (item.first < m_featureCount) x(item.first) = *item.second;
  }
  Eigen::Vector2d z = (*m_pW) * x + (*m_pB);
  score = 0.5;
  score = scoreOf(z(0), z(1));
  return true;
}

double CNNSentiClassifier::scoreOf(double z0, double z1) {
  double e0 = std::exp(CNNDocVectorBuilder::activate(z0));
  double e1 = std::exp(CNNDocVectorBuilder::activate(z1));
  double r = (e1 + 2.5) / (e1 + e0 + 5.0);
  return (r - 0.5) + (r - 0.5);
}

}  // namespace application
}  // namespace vortm
