#ifndef VORTM_MODULAR_SCORETRACE_H
#define VORTM_MODULAR_SCORETRACE_H

#include <string>
#include <vector>

#include "analyzer/Token.h"

namespace vortm {
namespace modular {

// One polar word as the scorer saw it: its value from the tag, the degree or
// negation word beside it, its position weight and what it added to the
// score.
struct ScoredWord {
  analyzer::Token token;
  size_t index = 0;
  double value = 0.0;          // polarity of the tag alone
  int modifierIndex = -1;      // token that gave the degree factor, or -1
  analyzer::Token modifier;    // that token
  double degree = 1.0;
  double weight = 1.0;         // position weight
  std::string weightReason;    // what set the weight ("but", "quote", ...)
  double contribution = 0.0;   // share of the final score
};

// Filled by a scorer that can explain itself, from the same pass that makes
// the score; a scorer that cannot leaves `detailed` false.
struct ScoreTrace {
  bool detailed = false;
  size_t tokenCount = 0;
  std::vector<ScoredWord> words;
  double sum = 0.0;
  double absSum = 0.0;
  int polarCount = 0;
  double damping = 1.0;
  // What the sum is divided by besides the absolute sum, for scorers that
  // dilute by text length; 0 when unused.
  double divisor = 0.0;
};

class IPositionWeighter;

// Starts a detailed trace of `tokens`: the reasons of the position weights
// come from the weighter's own pass when it can tell them; the weights used
// stay those of the scorer's weighting(), which a subclass may replace.
void startTrace(ScoreTrace& trace, std::vector<analyzer::Token>& tokens, IPositionWeighter* weighter,
                std::vector<std::string>& reasons);

}  // namespace modular
}  // namespace vortm

#endif
