#ifndef VORTM_MODULAR_SENTIORIENTEDPOSITIONWEIGHTER_H
#define VORTM_MODULAR_SENTIORIENTEDPOSITIONWEIGHTER_H

#include <string>

#include "modular/IPositionWeighter.h"

namespace vortm {
namespace modular {

// Weights that follow how opinion is phrased: quoted words are damped, words
// after a but-conjunction boosted, after a though-conjunction damped, and a
// question damps its clause. Optionally the last sentences of the text are
// favoured as well.
class SentiOrientedPositionWeighter : public virtual IPositionWeighter {
 public:
  SentiOrientedPositionWeighter();
  ~SentiOrientedPositionWeighter() override {}

  bool config(const configure::Parameter& param) override;
  bool weighting(std::vector<analyzer::Token>& tokens, std::vector<double>& weights) override;
  // weighting() that also names, per token, the factors that acted on it
  // ("quote", "but", "though", "question", "position"); `reasons` may be null.
  bool weightingWithReasons(std::vector<analyzer::Token>& tokens, std::vector<double>& weights,
                            std::vector<std::string>* reasons);
  // Low in the first half of the text, rising above 1.0 after the middle.
  virtual bool positionAwareWeighting(std::vector<analyzer::Token>& tokens, std::vector<double>& weights);

  static const std::string PARAM_POSITION_AWARE;
  static const std::string PARAM_QUOTA_PENALTY;
  static const std::string PARAM_BUT_CONJ_BOOST;
  static const std::string PARAM_THOUGH_CONJ_PENALTY;
  static const std::string PARAM_QUESTION_MARK_PENALTY;

 protected:
  void setDefaults();

  bool m_bPositionAware;
  double m_quotaPenalty;
  double m_butConjBoost;
  double m_thoughConjPenalty;
  double m_questionMarkPenalty;
};

}  // namespace modular
}  // namespace vortm

#endif
