#ifndef VORTM_MODULAR_WEIGHTEDLEXCIONSENTISCORER_H
#define VORTM_MODULAR_WEIGHTEDLEXCIONSENTISCORER_H

#include <map>
#include <set>
#include <string>
#include <vector>

#include "common/AutoPtr.h"
#include "common/InstanceCreator.h"
#include "common/Serializable.h"
#include "modular/ILexcionSentiScorer.h"
#include "modular/IPositionWeighter.h"

namespace vortm {
namespace modular {

// Scores single words like the standard scorer, refined three ways: a lexicon
// of per-word weights sharpens the strength of a polar word (never its sign),
// word lists limit where and on what a degree word may act, and the result is
// scaled by the text's length and by how much opinion it carries.
class WeightedLexcionSentiScorer : public ILexcionSentiScorer {
 public:
  // Word weights, saved as a count followed by word and weight pairs in
  // word order.
  class WeightedSentiLexcion : public common::Serializable {
   public:
    bool writeSelf(common::ObjectWriter& writer) override;
    // Keeps the first weight of a repeated word; false on a short read.
    bool readSelf(common::ObjectReader& reader) override;

    std::map<std::string, double> m_weights;
  };

  WeightedLexcionSentiScorer();
  ~WeightedLexcionSentiScorer() override;

  bool config(const configure::Parameter& param) override;
  // Always true.
  bool getSentiScore(std::vector<analyzer::Token>& tokens, double& score) override;
  bool explainSentiScore(std::vector<analyzer::Token>& tokens, double& score, ScoreTrace& trace) override;
  // The position weights used for scoring; subclasses swap in their own.
  virtual bool weighting(std::vector<analyzer::Token>& tokens, std::vector<double>& weights);

  bool loadWeightedLexcion(const std::string& path);
  // Factor of the degree word or negation beside `current`, after the
  // restrictions of the word lists.
  double getBoost(analyzer::Token& previous, analyzer::Token& current, analyzer::Token& next);

  const WeightedSentiLexcion& lexcion() const { return m_lexcion; }

  static const std::string PARAM_POSITION_WEIGHTER;
  static const std::string PARAM_WEIGHTED_LEXICON_FILE;
  static const std::string PARAM_BEFORE_ONLY_DEGREE_WORDS_FILE;
  static const std::string PARAM_AFTER_ONLY_DEGREE_WORDS_FILE;
  static const std::string PARAM_NEGATIVE_ONLY_DEGREE_WORDS_FILE;
  static const std::string PARAM_POSITIVE_ONLY_DEGREE_WORDS_FILE;
  static const std::string PARAM_NEGATION_SENTI_WORDS_FILE;

 protected:
  // Base value of a token by its tag, refined by the lexicon.
  double baseValue(const analyzer::Token& token) const;
  // getBoost, also telling which neighbour gave the factor: -1 the previous
  // token, 1 the next, 0 neither.
  double boostFrom(const analyzer::Token& previous, const analyzer::Token& current, const analyzer::Token& next,
                   int& side) const;
  // The one scoring pass; `trace` may be null.
  bool score(std::vector<analyzer::Token>& tokens, double& score, ScoreTrace* trace);

  common::AutoPtr<IPositionWeighter> m_positionWeighterPtr;
  WeightedSentiLexcion m_lexcion;
  std::set<std::string> m_afterOnlyDegreeWords;
  std::set<std::string> m_beforeOnlyDegreeWords;
  std::set<std::string> m_negativeOnlyDegreeWords;
  std::set<std::string> m_positiveOnlyDegreeWords;
  std::set<std::string> m_negationSentiWords;
};

VORTM_DECLARE_CREATOR(WeightedLexcionSentiScorerCreator, ILexcionSentiScorer, WeightedLexcionSentiScorer,
                      "weighted_lexcion_senti_scorer");

}  // namespace modular
}  // namespace vortm

#endif
