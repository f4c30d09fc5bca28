#ifndef VORTM_MODULAR_TEXTANALYZER_H
#define VORTM_MODULAR_TEXTANALYZER_H

#include <string>
#include <vector>

#include "analyzer/Analyzer.h"
#include "analyzer/Token.h"
#include "analyzer/TokenBuffer.h"
#include "common/AutoPtr.h"
#include "configure/Configurable.h"

namespace vortm {
namespace modular {

// The scoring side's door to the analyzer: builds one from the "analyzer"
// element and hands out its tokens as a buffer or as a vector.
class TextAnalyzer : public configure::Configurable {
 public:
  TextAnalyzer();
  virtual ~TextAnalyzer();

  // `param` is the element that holds "analyzer". Once an analyzer is set a
  // later call changes nothing and answers true, even when the first call
  // failed: the failed analyzer stays in place.
  bool config(const configure::Parameter& param) override;
  // `isolated` goes to the analyzer unchanged.
  virtual bool tokenizeText(const std::string& text, analyzer::TokenBuffer& buffer, bool isolated);
  // Empties `tokens` first, so a failure never leaves stale tokens behind.
  bool tokenizeText(const std::string& text, std::vector<analyzer::Token>& tokens, bool isolated);

  // Stores a new TextAnalyzer in `out` whatever the outcome, and answers
  // whether it configured.
  static bool configTextAnalyzer(const configure::Parameter& param, common::AutoPtr<TextAnalyzer>& out);

  const common::AutoPtr<analyzer::Analyzer>& getAnalyzer() const { return m_analyzerPtr; }

  static const std::string PARAM_ANALYZER;

 protected:
  common::AutoPtr<analyzer::Analyzer> m_analyzerPtr;
};

}  // namespace modular
}  // namespace vortm

#endif
