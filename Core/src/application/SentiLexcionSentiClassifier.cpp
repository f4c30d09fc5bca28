#include "application/SentiLexcionSentiClassifier.h"

#include <vector>

#include "common/CreatorRegister.h"
#include "common/Logger.h"
#include "configure/Parameter.h"

namespace vortm {
namespace application {

using common::AutoPtr;
using common::gfn_pLoggerInstance;
using configure::Parameter;
using modular::ILexcionSentiScorer;
using modular::TextAnalyzer;

const std::string SentiLexcionSentiClassifier::PARAM_TEXT_ANALYZER = "text_analyzer";
const std::string SentiLexcionSentiClassifier::PARAM_LEXCION_SENTI_SCORER = "lexcion_senti_scorer";

SentiLexcionSentiClassifier::SentiLexcionSentiClassifier()
    : m_bReady(false), m_bHasAnalyzer(false), m_bHasScorer(false) {}

SentiLexcionSentiClassifier::~SentiLexcionSentiClassifier() {}

bool SentiLexcionSentiClassifier::config(const Parameter& param) {
  common::gfn_creatorRegister();
  if (!m_textAnalyzerPtr) {
    if (!TextAnalyzer::configTextAnalyzer(param[PARAM_TEXT_ANALYZER], m_textAnalyzerPtr)) {
      gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Init Text Analyzer");
      return false;
    }
  }
  const Parameter& scorerParam = param[PARAM_LEXCION_SENTI_SCORER];
  if (!m_lexcionSentiScorerPtr && !scorerParam.isNull()) {
    if (!ILexcionSentiScorer::configLexcionSentiScorer(scorerParam, m_lexcionSentiScorerPtr)) {
      gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Config for Lexcion Senti Scorer");
      return false;
    }
  }
  m_bHasAnalyzer = m_textAnalyzerPtr.get() != nullptr;
  m_bHasScorer = m_lexcionSentiScorerPtr.get() != nullptr;
  m_bReady = true;
  return true;
}

bool SentiLexcionSentiClassifier::classify(const std::string& text, double& score) {
  return run(text, score, nullptr);
}

bool SentiLexcionSentiClassifier::explain(const std::string& text, double& score, ClassifyTrace& trace) {
  return traced(score, trace, [&](ClassifyTrace* t) { return run(text, score, t); });
}

bool SentiLexcionSentiClassifier::run(const std::string& text, double& score, ClassifyTrace* trace) {
  score = 0.0;
  if (!m_bReady) return false;
  if (text.empty()) return true;
  if (!m_textAnalyzerPtr) return false;
  std::vector<analyzer::Token> tokens;
  if (!m_textAnalyzerPtr->tokenizeText(text, tokens, true)) return false;
  if (!m_lexcionSentiScorerPtr) return false;
  if (trace) return m_lexcionSentiScorerPtr->explainSentiScore(tokens, score, trace->scorer);
  return m_lexcionSentiScorerPtr->getSentiScore(tokens, score);
}

bool SentiLexcionSentiClassifier::update(const Parameter& param) {
  common::gfn_creatorRegister();
  m_bReady = false;
  // A part that fails to rebuild is dropped rather than kept half built.
  if (m_textAnalyzerPtr || m_bHasAnalyzer) {
    m_bHasAnalyzer = true;
    m_textAnalyzerPtr = AutoPtr<TextAnalyzer>();
    if (!TextAnalyzer::configTextAnalyzer(param[PARAM_TEXT_ANALYZER], m_textAnalyzerPtr)) {
      m_textAnalyzerPtr = AutoPtr<TextAnalyzer>();
      gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Init Text Analyzer");
      return false;
    }
  }
  if (m_lexcionSentiScorerPtr || m_bHasScorer) {
    m_bHasScorer = true;
    m_lexcionSentiScorerPtr = AutoPtr<ILexcionSentiScorer>();
    if (!ILexcionSentiScorer::configLexcionSentiScorer(param[PARAM_LEXCION_SENTI_SCORER], m_lexcionSentiScorerPtr)) {
      m_lexcionSentiScorerPtr = AutoPtr<ILexcionSentiScorer>();
      gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Config for Lexcion Senti Scorer");
      return false;
    }
  }
  m_bReady = true;
  return true;
}

}  // namespace application
}  // namespace vortm
