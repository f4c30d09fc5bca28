#ifndef VORTM_MODULAR_SENTILABELSENTISCORER_H
#define VORTM_MODULAR_SENTILABELSENTISCORER_H

#include <map>
#include <set>
#include <string>
#include <vector>

#include "common/AutoPtr.h"
#include "common/InstanceCreator.h"
#include "common/Serializable.h"
#include "modular/SentiLabelExtractor.h"
#include "modular/StandardLexcionSentiScorer.h"

namespace vortm {
namespace modular {

// Scores a text by its opinions: each label is looked up in a lexicon of
// words and of attribute + word pairs, corrected by its modifiers and
// weighted by position. The score is the signed sum over the absolute sum
// plus a damping term that grows with the text's length.
class SentiLabelSentiScorer : public StandardLexcionSentiScorer {
 public:
  // Values of words and of attribute + word keys. A value of size 0.99 or
  // more is a default that a word's own value may override; a smaller one
  // is a judgement that stands.
  class SentiLabelLexcion : public common::Serializable {
   public:
    bool writeSelf(common::ObjectWriter& writer) override;
    // Keeps the first value of a repeated key, and what was read before a
    // stream that ends early.
    bool readSelf(common::ObjectReader& reader) override;

    bool find(const std::string& key, double& value) const;
    std::map<std::string, double>& entries() { return m_lexcion; }
    const std::map<std::string, double>& entries() const { return m_lexcion; }

   private:
    std::map<std::string, double> m_lexcion;
  };

  SentiLabelSentiScorer();
  ~SentiLabelSentiScorer() override;

  bool config(const configure::Parameter& param) override;
  bool getSentiScore(std::vector<analyzer::Token>& tokens, double& score) override;
  bool loadSentiLabelLexcion(const std::string& path);

  // The labels of the tokens, from a private clone of the extractor; false
  // before config.
  bool extractLabels(std::vector<analyzer::Token>& tokens, std::vector<SentiLabel>& labels);

  // The value of one label, settling between the word, the attribute and
  // the pair.
  double getSentiSocre(SentiLabel& label);
  double getSentiSocreByAtt(SentiLabel& label);
  double getSentiSocreBySenti(SentiLabel& label);
  // `exact` tells whether a pair entry settled the value for good.
  double getSentiSocreByCombine(SentiLabel& label, bool& exact);
  // One factor for a list of modifiers of a word.
  double modifyBoost(std::vector<analyzer::Token>& modifiers, bool isBefore);

  SentiLabelLexcion& lexcion() { return m_lexcion; }

  static const std::string PARAM_SENTI_LABEL_EXTRACTOR;
  static const std::string PARAM_SENTI_LABEL_LEXICON_FILE;
  static const std::string PARAM_BEFORE_ONLY_DEGREE_WORDS_FILE;
  static const std::string PARAM_AFTER_ONLY_DEGREE_WORDS_FILE;

 private:
  double unitBoost(Unit& unit);

  common::AutoPtr<SentiLabelExtractor> m_extractorPtr;
  SentiLabelLexcion m_lexcion;
  std::set<std::string> m_afterOnlyWords;
  std::set<std::string> m_beforeOnlyWords;
  bool m_bConfigured;
};

VORTM_DECLARE_CREATOR(SentiLabelSentiScorerCreator, ILexcionSentiScorer, SentiLabelSentiScorer,
                      "senti_label_senti_scorer");

}  // namespace modular
}  // namespace vortm

#endif
