#ifndef VORTM_MODULAR_SIMPLESENTILABELEXTRACTOR_H
#define VORTM_MODULAR_SIMPLESENTILABELEXTRACTOR_H

#include <string>
#include <vector>

#include "common/AutoPtr.h"
#include "common/InstanceCreator.h"
#include "modular/SentiLabelExtractor.h"
#include "modular/SentiLabelState.h"
#include "modular/TextAnalyzer.h"

namespace vortm {
namespace modular {

// Walks the tokens once through the opinion grammar of SentiLabelState.h,
// holding the open words and modifiers of the walk.
class SimpleSentiLabelExtractor : public SentiLabelExtractor {
 public:
  SimpleSentiLabelExtractor();
  ~SimpleSentiLabelExtractor() override;

  // Loads the process-wide word lists (the first extractor's files win) and
  // an optional analyzer for extract() on strings.
  bool config(const configure::Parameter& param) override;
  bool extract(std::vector<analyzer::Token>& tokens, std::vector<SentiLabel>& labels) override;
  bool extract(const std::string& text, std::vector<SentiLabel>& labels) override;
  common::AutoPtr<SentiLabelExtractor> clone() override;

  static const std::string PARAM_TEXT_ANALYZER;
  static const std::string PARAM_INTER_WORDS_FILE;
  static const std::string PARAM_NEGATION_SENTI_WORDS_FILE;
  static const std::string PARAM_SENTI_NEGATION_WORDS_FILE;
  static const std::string PARAM_SENTI_DEGREE_WORDS_FILE;

 private:
  friend class State;

  std::vector<SentiLabel> m_labels;
  StatePtr m_statePtr;
  Unit m_senti;
  Unit m_att;
  std::vector<analyzer::Token> m_pending;
  std::vector<Unit> m_sentis;
  common::AutoPtr<TextAnalyzer> m_textAnalyzerPtr;
};

VORTM_DECLARE_CREATOR(SimpleSentiLabelExtractorCreator, SentiLabelExtractor, SimpleSentiLabelExtractor,
                      "simple_senti_label_extractor");

}  // namespace modular
}  // namespace vortm

#endif
