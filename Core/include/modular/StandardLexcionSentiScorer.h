#ifndef VORTM_MODULAR_STANDARDLEXCIONSENTISCORER_H
#define VORTM_MODULAR_STANDARDLEXCIONSENTISCORER_H

#include <string>
#include <vector>

#include "common/AutoPtr.h"
#include "common/InstanceCreator.h"
#include "modular/ILexcionSentiScorer.h"
#include "modular/IPositionWeighter.h"

namespace vortm {
namespace modular {

// Scores from the tags alone: polar words (tags 6 to 9) take a value, are
// scaled by a degree word or negation right beside them and by their position
// weight, and the score is the signed sum over the absolute sum, damped for
// texts with fewer than four polar words. The result lies in [-1, 1].
class StandardLexcionSentiScorer : public ILexcionSentiScorer {
 public:
  StandardLexcionSentiScorer();
  ~StandardLexcionSentiScorer() override;

  bool config(const configure::Parameter& param) override;
  // Always true.
  bool getSentiScore(std::vector<analyzer::Token>& tokens, double& score) override;
  // The position weights used for scoring; subclasses swap in their own.
  virtual bool weighting(std::vector<analyzer::Token>& tokens, std::vector<double>& weights);

  static const std::string PARAM_POSITION_WEIGHTER;

  // Factor of a degree word (tags 10 to 14) or negation (15); false for any
  // other tag. Shared by the lexicon scorers.
  static bool degreeFactor(int tag, double& factor);

 protected:
  common::AutoPtr<IPositionWeighter> m_positionWeighterPtr;
};

VORTM_DECLARE_CREATOR(StandardLexcionSentiScorerCreator, ILexcionSentiScorer, StandardLexcionSentiScorer,
                      "std_lexcion_senti_scorer");

}  // namespace modular
}  // namespace vortm

#endif
