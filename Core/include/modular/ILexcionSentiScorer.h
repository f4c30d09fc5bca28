#ifndef VORTM_MODULAR_ILEXCIONSENTISCORER_H
#define VORTM_MODULAR_ILEXCIONSENTISCORER_H

#include <vector>

#include "analyzer/Token.h"
#include "common/AutoPtr.h"
#include "configure/Configurable.h"
#include "modular/ScoreTrace.h"

namespace vortm {
namespace modular {

// Turns the tagged tokens of a text into one score. A configured scorer keeps
// no state between calls.
class ILexcionSentiScorer : public configure::Configurable {
 public:
  virtual ~ILexcionSentiScorer() {}
  bool config(const configure::Parameter& param) override = 0;
  virtual bool getSentiScore(std::vector<analyzer::Token>& tokens, double& score) = 0;
  // Scores like getSentiScore and tells how. Scorers that can, override it
  // and fill `trace` from their own scoring pass; the default gives the
  // score without detail.
  virtual bool explainSentiScore(std::vector<analyzer::Token>& tokens, double& score, ScoreTrace& trace) {
    trace = ScoreTrace();
    trace.tokenCount = tokens.size();
    return getSentiScore(tokens, score);
  }

  // Builds the scorer named by "identifier" in `param` and configures it with
  // the "param" element. An unknown identifier leaves `out` empty.
  static bool configLexcionSentiScorer(const configure::Parameter& param, common::AutoPtr<ILexcionSentiScorer>& out);
};

}  // namespace modular
}  // namespace vortm

#endif
