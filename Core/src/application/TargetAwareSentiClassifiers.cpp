#include "application/TargetAwareSentiClassifiers.h"

#include "analyzer/Analyzer.h"
#include "common/CreatorRegister.h"
#include "common/Logger.h"
#include "configure/Parameter.h"
#include "utility/Utility.h"

namespace vortm {
namespace application {

using analyzer::Token;
using common::AutoPtr;
using common::gfn_pLoggerInstance;
using configure::Parameter;

const std::string TargetAwareSentiLexcionSentiClassifier::PARAM_TARGET_AWARE_LEXCION_SENTI_SCORER =
    "target_aware_lexcion_senti_scorer";
const std::string TargetAwareCentroidSentiClassifier::PARAM_TARGET_AWARE_DOC_VEC_BUILDER =
    "target_aware_doc_vec_builder";
const std::string TargetAwareStandardSentiClassifier::PARAM_TARGET_AWARE_CENTROID_CLASSIFIER =
    "target_aware_centroid_classifier";
const std::string TargetAwareStandardSentiClassifier::PARAM_TARGET_AWARE_SENTI_LEXCION_CLASSIFIER =
    "target_aware_senti_lexcion_classifier";
const std::string TargetAwareStandardSentiClassifier::PARAM_LEXICON_WEIGHT = "lexicon_weight";

namespace {

// Tokenizes with the targets put in front of the tokenizer chain for the
// length of the call, so that a target is never split or swallowed by a
// longer dictionary word. Neither step locks: one thread at a time.
bool tokenizeWithTargets(modular::TextAnalyzer& textAnalyzer, const std::string& text,
                         const std::vector<std::string>& targets, std::vector<Token>& tokens) {
  AutoPtr<analyzer::Analyzer> analyzer = textAnalyzer.getAnalyzer();
  bool attached = false;
  if (!targets.empty() && analyzer) {
    attached = analyzer->attachUserWords(targets, static_cast<Token::TType>(4), static_cast<Token::TTag>(25));
  }
  bool ok = textAnalyzer.tokenizeText(text, tokens, true);
  if (attached) analyzer->detachPreTokenizer();
  return ok;
}

// The opening steps of both parts' classify: the score starts at 0.0; false
// for a classifier that is not ready or fails to tokenize; true with no
// tokens for an empty text, which scores 0.0.
bool prepareTokens(bool ready, const AutoPtr<modular::TextAnalyzer>& textAnalyzer, const std::string& text,
                   const std::vector<std::string>& targets, std::vector<Token>& tokens, double& score) {
  score = 0.0;
  if (!ready) return false;
  if (text.empty()) return true;
  if (!textAnalyzer) return false;
  return tokenizeWithTargets(*textAnalyzer, text, targets, tokens);
}

}  // namespace

// ---- lexicon part ----

TargetAwareSentiLexcionSentiClassifier::TargetAwareSentiLexcionSentiClassifier() {}

TargetAwareSentiLexcionSentiClassifier::~TargetAwareSentiLexcionSentiClassifier() {}

bool TargetAwareSentiLexcionSentiClassifier::config(const Parameter& param) {
  common::gfn_creatorRegister();
  if (!m_targetAwareScorerPtr) {
    const Parameter& block = param[PARAM_TARGET_AWARE_LEXCION_SENTI_SCORER];
    std::string identifier;
    block["identifier"].getStringValue(identifier);
    m_targetAwareScorerPtr = common::InstanceCreator<modular::ITargetAwareLexcionSentiScorer>::getCreation(identifier);
    if (!m_targetAwareScorerPtr || !m_targetAwareScorerPtr->config(block["param"])) {
      m_targetAwareScorerPtr = AutoPtr<modular::ITargetAwareLexcionSentiScorer>();
      gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Init Target Aware Lexcion Senti Scorer with " +
                                                        identifier);
      return false;
    }
  }
  if (!SentiLexcionSentiClassifier::config(param)) return false;
  m_bReady = true;
  return true;
}

bool TargetAwareSentiLexcionSentiClassifier::classify(const std::string& text,
                                                      const std::vector<std::string>& targets, double& score) {
  std::vector<Token> tokens;
  if (!prepareTokens(m_bReady, m_textAnalyzerPtr, text, targets, tokens, score)) return false;
  if (text.empty()) return true;
  if (!m_targetAwareScorerPtr) return false;
  std::vector<std::string> trimmed;
  for (size_t i = 0; i < targets.size(); ++i) {
    std::string target = targets[i];
    utility::Utility::trim(target);
    if (!target.empty()) trimmed.push_back(target);
  }
  return m_targetAwareScorerPtr->getSentiScore(tokens, trimmed, score);
}

bool TargetAwareSentiLexcionSentiClassifier::classify(const std::string& text, double& score) {
  return classify(text, std::vector<std::string>(), score);
}

// ---- centroid part ----

TargetAwareCentroidSentiClassifier::TargetAwareCentroidSentiClassifier() {}

TargetAwareCentroidSentiClassifier::~TargetAwareCentroidSentiClassifier() {}

bool TargetAwareCentroidSentiClassifier::config(const Parameter& param) {
  if (!m_targetAwareBuilderPtr) {
    AutoPtr<modular::TargetAwarePositionalDocVectorBuilder> builder(
        new modular::TargetAwarePositionalDocVectorBuilder(AutoPtr<modular::IWordWeighter>(),
                                                           AutoPtr<modular::ITargetAwarePositionWeighter>()),
        true);
    if (!builder->config(param[PARAM_TARGET_AWARE_DOC_VEC_BUILDER])) {
      gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Init Target Aware Doc Vector Builder");
      return false;
    }
    m_targetAwareBuilderPtr = builder;
  }
  if (!CentroidSentiClassifier::config(param)) return false;
  m_bReady = true;
  return true;
}

bool TargetAwareCentroidSentiClassifier::isValid(modular::Centroid& centroid) {
  if (!m_targetAwareBuilderPtr || !centroid.isValid() || centroid.labels.size() != 2) return false;
  if (centroid.labels[0].identifier != "neg" || centroid.labels[1].identifier != "pos") return false;
  return static_cast<int>(centroid.weights[0].size()) == m_targetAwareBuilderPtr->getFeatureCount();
}

bool TargetAwareCentroidSentiClassifier::classify(const std::string& text, const std::vector<std::string>& targets,
                                                  double& score) {
  return sentiClassifySentiCentroid(text, targets, score);
}

bool TargetAwareCentroidSentiClassifier::classify(const std::string& text, double& score) {
  return sentiClassifySentiCentroid(text, std::vector<std::string>(), score);
}

bool TargetAwareCentroidSentiClassifier::sentiClassifySentiCentroid(const std::string& text,
                                                                    const std::vector<std::string>& targets,
                                                                    double& score) {
  std::vector<Token> tokens;
  if (!prepareTokens(m_bReady, m_textAnalyzerPtr, text, targets, tokens, score)) return false;
  if (text.empty()) return true;
  m_targetAwareBuilderPtr->setTarget(targets);
  utility::MySparseVector<double, int> vector;
  if (!m_targetAwareBuilderPtr->buildDocVec(tokens, vector)) return false;
  return getSentiScoreBySentiCentroids(vector, score);
}

// ---- the blend ----

TargetAwareStandardSentiClassifier::TargetAwareStandardSentiClassifier() : m_bReady(false), m_lexiconWeight(0.5) {}

TargetAwareStandardSentiClassifier::~TargetAwareStandardSentiClassifier() {}

bool TargetAwareStandardSentiClassifier::config(const Parameter& param) {
  if (!m_centroidClassifier.config(param[PARAM_TARGET_AWARE_CENTROID_CLASSIFIER])) return false;
  if (!m_lexiconClassifier.config(param[PARAM_TARGET_AWARE_SENTI_LEXCION_CLASSIFIER])) return false;
  m_bReady = false;
  // An out-of-range weight is not an error: it falls back to an even blend.
  if (!param[PARAM_LEXICON_WEIGHT].getFloatValue(m_lexiconWeight) || m_lexiconWeight < 0.0 || m_lexiconWeight > 1.0) {
    m_lexiconWeight = 0.5;
  }
  m_bReady = true;
  return true;
}

bool TargetAwareStandardSentiClassifier::update(const Parameter& param) {
  if (!m_bReady) return false;
  m_bReady = false;
  if (!m_centroidClassifier.CentroidSentiClassifier::update(param[PARAM_TARGET_AWARE_CENTROID_CLASSIFIER]))
    return false;
  if (!m_lexiconClassifier.SentiLexcionSentiClassifier::update(param[PARAM_TARGET_AWARE_SENTI_LEXCION_CLASSIFIER]))
    return false;
  m_bReady = true;
  return true;
}

bool TargetAwareStandardSentiClassifier::classify(const std::string& text, const std::vector<std::string>& targets,
                                                  double& score) {
  return sentiClassifyCombine(text, targets, score);
}

bool TargetAwareStandardSentiClassifier::sentiClassifyCombine(const std::string& text,
                                                              const std::vector<std::string>& targets,
                                                              double& score) {
  score = 0.0;
  if (!m_bReady) return false;
  if (text.empty()) return true;
  double c = 0.0;
  double l = 0.0;
  if (!m_centroidClassifier.classify(text, targets, c)) return false;
  if (!m_lexiconClassifier.classify(text, targets, l)) return false;
  score = m_lexiconWeight * l + (1.0 - m_lexiconWeight) * c;
  return true;
}

namespace {

// Puts a tokenizer of the targets, tagged 25, at the head of the analyzer's
// chain for the lifetime of the object.
class TargetMarker {
 public:
  TargetMarker(const AutoPtr<modular::TextAnalyzer>& textAnalyzer, const std::vector<std::string>& targets)
      : m_attached(false) {
    if (textAnalyzer) m_analyzer = textAnalyzer->getAnalyzer();
    if (m_analyzer && !targets.empty())
      m_attached = m_analyzer->attachUserWords(targets, Token::TT_UNSET, Token::TG_TARGET);
  }
  ~TargetMarker() {
    if (m_attached) m_analyzer->detachPreTokenizer();
  }

 private:
  AutoPtr<analyzer::Analyzer> m_analyzer;
  bool m_attached;
};

}  // namespace

bool TargetAwareStandardSentiClassifier::classifyMarkingTargets(const std::string& text,
                                                                const std::vector<std::string>& targets,
                                                                double& score) {
  std::vector<std::string> words;
  std::vector<std::string> hidden;
  for (size_t i = 0; i < targets.size(); ++i) {
    std::string word = targets[i];
    utility::Utility::trim(word);
    if (word.empty()) continue;
    words.push_back(word);
    hidden.push_back("\n" + word);
  }
  TargetMarker centroidMarker(m_centroidClassifier.getTextAnalyzer(), words);
  TargetMarker lexiconMarker(m_lexiconClassifier.getTextAnalyzer(), words);
  return classify(text, hidden, score);
}

}  // namespace application
}  // namespace vortm
