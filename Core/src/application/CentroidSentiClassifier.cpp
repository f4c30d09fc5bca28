#include "application/CentroidSentiClassifier.h"

#include <cmath>

#include "common/CreatorRegister.h"
#include "common/Logger.h"
#include "configure/Parameter.h"
#include "utility/Utility.h"

namespace vortm {
namespace application {

using common::AutoPtr;
using common::gfn_pLoggerInstance;
using configure::Parameter;
using modular::Centroid;
using utility::Utility;

const std::string CentroidSentiClassifier::PARAM_DOC_VEC_BUILDER = "doc_vec_builder";
const std::string CentroidSentiClassifier::PARAM_TEXT_ANALYZER = "text_analyzer";
const std::string CentroidSentiClassifier::PARAM_NORM_METHOD = "norm_method";
const std::string CentroidSentiClassifier::PARAM_IS_ENSURE_NONNEGATIVE = "is_ensure_nonnegative";
const std::string CentroidSentiClassifier::PARAM_SENTI_CENTROID_FILES = "senti_centroid_files";

CentroidSentiClassifier::CentroidSentiClassifier()
    : m_normMethod("l2norm"), m_bEnsureNonNegative(true), m_bReady(false) {}

CentroidSentiClassifier::~CentroidSentiClassifier() {}

bool CentroidSentiClassifier::config(const Parameter& param) {
  common::gfn_creatorRegister();
  const Parameter& builderParam = param[PARAM_DOC_VEC_BUILDER];
  if (!m_docVecBuilderPtr && !builderParam.isNull()) {
    if (!modular::IDocVectorBuilder::configDocVectorBuilder(builderParam, m_docVecBuilderPtr)) {
      gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Init Doc Vector Builder");
      return false;
    }
  }
  const Parameter& analyzerParam = param[PARAM_TEXT_ANALYZER];
  if (!m_textAnalyzerPtr && !analyzerParam.isNull()) {
    if (!modular::TextAnalyzer::configTextAnalyzer(analyzerParam, m_textAnalyzerPtr)) {
      gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Init Text Analyzer");
      return false;
    }
  }
  m_normMethod = "l2norm";
  param[PARAM_NORM_METHOD].getStringValue(m_normMethod);
  std::string nonNegative = "true";
  param[PARAM_IS_ENSURE_NONNEGATIVE].getStringValue(nonNegative);
  Utility::toLowcase(nonNegative);
  m_bEnsureNonNegative = nonNegative != "false";
  if (!configSentiCentroids(param[PARAM_SENTI_CENTROID_FILES])) return false;
  AutoPtr<Centroid> merged(new Centroid(), true);
  if (!merged->merge(m_centroids, m_normMethod == "l2norm")) return false;
  m_centroids.clear();
  m_centroids.push_back(merged);
  m_bReady = true;
  return true;
}

bool CentroidSentiClassifier::configSentiCentroids(const Parameter& files) {
  m_centroids.clear();
  for (int index = 0;; ++index) {
    const Parameter& file = files[index];
    if (file.isNull()) break;
    AutoPtr<Centroid> centroid(new Centroid(), true);
    std::string path;
    if (!file.getStringValue(path) || !centroid->loadFrom(path) || !isValid(*centroid)) {
      gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Load Senti Centroid from File " + path);
      return false;
    }
    if (m_normMethod == "l2norm") centroid->L2Normalize();
    if (m_bEnsureNonNegative) centroid->ensureNonNegative();
    if (!m_centroids.empty() && !m_centroids[0]->isConsistent(*centroid)) return false;
    m_centroids.push_back(centroid);
  }
  if (m_centroids.empty()) {
    gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Error: No Senti Centroid Loaded ");
    return false;
  }
  return true;
}

bool CentroidSentiClassifier::isValid(Centroid& centroid) {
  if (!m_docVecBuilderPtr || !centroid.isValid() || centroid.labels.size() != 2) return false;
  if (centroid.labels[0].identifier != "neg" || centroid.labels[1].identifier != "pos") return false;
  return static_cast<int>(centroid.weights[0].size()) == m_docVecBuilderPtr->getFeatureCount();
}

bool CentroidSentiClassifier::update(const Parameter& param) {
  m_bReady = false;
  if (!configSentiCentroids(param[PARAM_SENTI_CENTROID_FILES])) return false;
  m_bReady = true;
  return true;
}

bool CentroidSentiClassifier::classify(const std::string& text, double& score) {
  return sentiClassifySentiCentroid(text, score);
}

bool CentroidSentiClassifier::classify(std::vector<analyzer::Token>& tokens, double& score) {
  return sentiClassifySentiCentroid(tokens, score);
}

bool CentroidSentiClassifier::sentiClassifySentiCentroid(const std::string& text, double& score) {
  score = 0.0;
  if (!m_bReady) return false;
  if (text.empty()) return true;
  std::vector<analyzer::Token> tokens;
  if (!m_textAnalyzerPtr || !m_textAnalyzerPtr->tokenizeText(text, tokens, true)) return false;
  return sentiClassifySentiCentroid(tokens, score);
}

bool CentroidSentiClassifier::sentiClassifySentiCentroid(std::vector<analyzer::Token>& tokens, double& score) {
  score = 0.0;
  if (!m_bReady) return false;
  if (tokens.empty()) return true;
  utility::MySparseVector<double, int> vector;
  if (!m_docVecBuilderPtr || !m_docVecBuilderPtr->buildDocVec(tokens, vector)) return false;
  return getSentiScoreBySentiCentroids(vector, score);
}

bool CentroidSentiClassifier::getSentiScoreBySentiCentroids(utility::MySparseVector<double, int>& vector,
                                                            double& score) {
  for (size_t m = 0; m < m_centroids.size(); ++m) {
    std::vector<double> classScores;
    if (!m_centroids[m]->classify(vector, classScores)) return false;
    score += computeSentiScore(*m_centroids[m], classScores);
  }
  if (!m_centroids.empty()) score /= static_cast<double>(m_centroids.size());
  return true;
}

double CentroidSentiClassifier::computeSentiScore(Centroid& model, const std::vector<double>& classScores) {
  double pos = 0.0;
  double neg = 0.0;
  for (size_t c = 0; c < model.labels.size() && c < classScores.size(); ++c) {
    std::string name = model.labels[c].identifier;
    Utility::trim(name);
    Utility::toLowcase(name);
    double value = classScores[c] > 0.0 ? classScores[c] : 0.0;
    if (name == "pos") pos = value;
    if (name == "neg") neg = value;
  }
  if (!(std::fabs(pos - neg) > 1e-05)) return 0.0;
  double r = (pos + 0.05) / (pos + 0.1 + neg);
  return (r - 0.5) + (r - 0.5);
}

}  // namespace application
}  // namespace vortm
