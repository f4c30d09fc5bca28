#ifndef VORTM_APPLICATION_SENTILEXCIONSENTICLASSIFIER_H
#define VORTM_APPLICATION_SENTILEXCIONSENTICLASSIFIER_H

#include <string>

#include "application/ISentiClassifier.h"
#include "common/AutoPtr.h"
#include "common/InstanceCreator.h"
#include "modular/ILexcionSentiScorer.h"
#include "modular/TextAnalyzer.h"

namespace vortm {
namespace application {

// Tokenizes a text and lets a lexicon scorer score the tokens. classify()
// keeps its tokens in a local and tokenizes in isolated mode, so one
// configured object may serve several threads.
class SentiLexcionSentiClassifier : public ISentiClassifier {
 public:
  SentiLexcionSentiClassifier();
  ~SentiLexcionSentiClassifier() override;

  // An analyzer or scorer already set is kept, so a subclass may build its
  // own first. Without a "lexcion_senti_scorer" block the classifier is
  // ready but every classify() fails.
  bool config(const configure::Parameter& param) override;
  bool classify(const std::string& text, double& score) override;
  bool explain(const std::string& text, double& score, ClassifyTrace& trace) override;
  // Rebuilds the parts that config built; not ready while it runs. A failed
  // update drops the part that failed, and a later update rebuilds it all
  // the same, so that a good update always restores classification.
  bool update(const configure::Parameter& param) override;

  static const std::string PARAM_TEXT_ANALYZER;
  static const std::string PARAM_LEXCION_SENTI_SCORER;

 protected:
  // The one classifying pass; `trace` may be null.
  bool run(const std::string& text, double& score, ClassifyTrace* trace);

  common::AutoPtr<modular::TextAnalyzer> m_textAnalyzerPtr;
  bool m_bReady;
  common::AutoPtr<modular::ILexcionSentiScorer> m_lexcionSentiScorerPtr;
  // Which parts update rebuilds: those that were ever set, even if a failed
  // update has dropped them since.
  bool m_bHasAnalyzer;
  bool m_bHasScorer;
};

VORTM_DECLARE_CREATOR(SentiLexcionSentiClassifierCreator, ISentiClassifier, SentiLexcionSentiClassifier,
                      "lexcion_senti_classifier");

}  // namespace application
}  // namespace vortm

#endif
