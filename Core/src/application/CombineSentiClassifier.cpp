#include "application/CombineSentiClassifier.h"

#include "application/SentiClassifierFactory.h"
#include "common/Logger.h"
#include "configure/Parameter.h"

namespace vortm {
namespace application {

using common::AutoPtr;
using common::gfn_pLoggerInstance;
using configure::Parameter;

const std::string CombineSentiClassifier::PARAM_NUMBER_SENTI_CLASSIFIERS = "number_senti_classifiers";
const std::string CombineSentiClassifier::PARAM_IDENTIFIER = "identifier";
const std::string CombineSentiClassifier::PARAM_PARAM = "param";
const std::string CombineSentiClassifier::PARAM_NUMBER_WEIGHT = "number_weight";

CombineSentiClassifier::CombineSentiClassifier() : m_bReady(false) {}

CombineSentiClassifier::~CombineSentiClassifier() {}

bool CombineSentiClassifier::config(const Parameter& param) {
  const Parameter& list = param[PARAM_NUMBER_SENTI_CLASSIFIERS];
  double sum = 0.0;
  // The list ends at the first child that is null: past the end, or empty.
  for (int index = 0;; ++index) {
    const Parameter& child = list[index];
    if (child.isNull()) break;
    std::string identifier;
    if (!child[PARAM_IDENTIFIER].getStringValue(identifier)) {
      gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "No \"identifier\" Item for the Number Senti Classifier");
      return false;
    }
    AutoPtr<ISentiClassifier> member = SentiClassifierFactory::getSentiClassifier(identifier, child[PARAM_PARAM]);
    if (!member) {
      gfn_pLoggerInstance(0, "", 0)->LogWarn("101",
                                             "Fail to Init the Number Senti Classifer with Identifier " + identifier);
      return false;
    }
    double weight = 0.0;
    if (!child[PARAM_NUMBER_WEIGHT].getFloatValue(weight) || weight < 0.0) {
      gfn_pLoggerInstance(0, "", 0)->LogWarn(
          "101", "No \"number_weight\" Item for the Number Senti Classifier  or the Weight Value is Invalid");
      return false;
    }
    m_classifiers.push_back(member);
    m_weights.push_back(weight);
    sum += weight;
  }
  if (m_classifiers.empty()) {
    gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "No Number Sentiment Classifer Inited");
    return false;
  }
  // One member may weigh nothing, but not all of them.
  if (sum < 1e-05) return false;
  m_bReady = true;
  return true;
}

bool CombineSentiClassifier::classify(const std::string& text, double& score) { return run(text, score, nullptr); }

bool CombineSentiClassifier::explain(const std::string& text, double& score, ClassifyTrace& trace) {
  return traced(score, trace, [&](ClassifyTrace* t) { return run(text, score, t); });
}

bool CombineSentiClassifier::run(const std::string& text, double& score, ClassifyTrace* trace) {
  if (!m_bReady) return false;
  score = 0.0;
  if (text.empty() || m_classifiers.empty()) return true;
  for (size_t i = 0; i < m_classifiers.size(); ++i) {
    double local = 0.0;
    bool ok;
    if (trace) {
      trace->weights.push_back(m_weights[i]);
      trace->members.emplace_back();
      ok = m_classifiers[i]->explain(text, local, trace->members.back());
    } else {
      ok = m_classifiers[i]->classify(text, local);
    }
    if (!ok) {
      gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Classify by One Number Sentiment Classifer");
      return false;
    }
    score += m_weights[i] * local;
  }
  return true;
}

// Members are updated by position; identifiers and weights stay as config
// set them.
bool CombineSentiClassifier::update(const Parameter& param) {
  m_bReady = false;
  const Parameter& list = param[PARAM_NUMBER_SENTI_CLASSIFIERS];
  for (int index = 0;; ++index) {
    const Parameter& child = list[index];
    if (child.isNull()) {
      if (index == 0) return false;
      m_bReady = true;
      return true;
    }
    if (static_cast<size_t>(index) >= m_classifiers.size()) return false;
    if (!m_classifiers[index]->update(child[PARAM_PARAM])) return false;
  }
}

}  // namespace application
}  // namespace vortm
