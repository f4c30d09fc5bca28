#include "application/CentroidSentiClassifier.h"

#include <cmath>
#include <cstring>
#include <typeinfo>

#include "analyzer/Analyzer.h"

#include "common/CreatorRegister.h"
#include "common/Logger.h"
#include "configure/Parameter.h"
#include "modular/StandardDocVectorBuilder.h"
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
  if (analyzer::ChNGramTokenizer* grams = gramTokenizer()) return classifyGrams(*grams, text, score);
  std::vector<analyzer::Token> tokens;
  if (!m_textAnalyzerPtr || !m_textAnalyzerPtr->tokenizeText(text, tokens, true)) return false;
  return sentiClassifySentiCentroid(tokens, score);
}

analyzer::ChNGramTokenizer* CentroidSentiClassifier::gramTokenizer() const {
  // Only when the n-grams are all the analyzer makes and the plain builder
  // counts them do the words suffice; anything else takes the tokens.
  if (!m_textAnalyzerPtr || !m_docVecBuilderPtr) return nullptr;
  modular::IDocVectorBuilder& builder = *m_docVecBuilderPtr;
  if (typeid(builder) != typeid(modular::StandardDocVectorBuilder)) return nullptr;
  // References, not copies: the pointers' counts are not guarded, and
  // several threads classify at once.
  const AutoPtr<analyzer::Analyzer>& analyzer = m_textAnalyzerPtr->getAnalyzer();
  if (!analyzer || !analyzer->getTokenizer()) return nullptr;
  analyzer::Tokenizer& head = *analyzer->getTokenizer();
  if (typeid(head) != typeid(analyzer::ChNGramTokenizer) || head.getPostTokenizer() || head.getTokenFilter())
    return nullptr;
  return static_cast<analyzer::ChNGramTokenizer*>(&head);
}

bool CentroidSentiClassifier::classifyGrams(analyzer::ChNGramTokenizer& grams, const std::string& text,
                                            double& score) {
  // The same document vector as from the tokens, without making them: a
  // text's n-grams are several times its length, and each token would be
  // written, read back and copied on its way to a single look-up.
  thread_local std::vector<analyzer::ChNGramTokenizer::GramSpan> spans;
  thread_local std::vector<modular::Vocabulary::WordPiece> words;
  if (!grams.gramSpans(text, spans)) return false;
  if (spans.empty()) return true;
  // A term is looked up as a C string, so a gram ends at a zero byte.
  bool hasZero = std::memchr(text.data(), 0, text.size()) != nullptr;
  words.resize(spans.size());
  for (size_t i = 0; i < spans.size(); ++i) {
    const char* start = text.data() + spans[i].start;
    size_t length = spans[i].length;
    if (hasZero) {
      const void* zero = std::memchr(start, 0, length);
      if (zero) length = static_cast<size_t>(static_cast<const char*>(zero) - start);
    }
    words[i] = modular::Vocabulary::WordPiece(start, length);
  }
  utility::MySparseVector<double, int> vector;
  modular::StandardDocVectorBuilder& builder = static_cast<modular::StandardDocVectorBuilder&>(*m_docVecBuilderPtr);
  if (!builder.buildDocVecOfWords(words, vector)) return false;
  return getSentiScoreBySentiCentroids(vector, score);
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
