#ifndef VORTM_MODULAR_RULE_H
#define VORTM_MODULAR_RULE_H

#include <map>
#include <set>
#include <string>
#include <vector>

#include "analyzer/TokenBuffer.h"
#include "trainset/Label.h"

namespace vortm {
namespace modular {

// A Boolean keyword rule that puts a text in a class. Immutable once parsed:
// matching on a word map only reads it, so rules may be shared by threads.
class Rule {
 public:
  virtual ~Rule() {}
  // Counts the keyword tokens of the buffer (rewinding it) and matches.
  virtual bool match(analyzer::TokenBuffer& tokens, double& score) = 0;
  // `words` holds keyword counts, `count` the number of words of the text.
  virtual bool match(std::map<std::string, unsigned int>& words, int count, double& score) = 0;
  virtual bool getKeywords(std::set<std::string>& keywords) = 0;

  // The word count and keyword counts of a token buffer, as match() sees
  // them: words are tokens of type 2 or 4, or English words of 2 to 50
  // bytes; a word tagged 25 is a keyword. Lets a caller match many rules
  // against one count.
  static void countWords(analyzer::TokenBuffer& tokens, std::map<std::string, unsigned int>& words, int& count);

  const trainset::Label& getLabel() const { return m_label; }

 protected:
  trainset::Label m_label;
};

// A top operator (AND or OR) over subrules, each an operator (AND, OR or
// NOT) over a keyword set. Strength rises with keyword counts, as
// f / log2(f + 1), and falls with the square root of the text's length.
class BasicRule : public Rule {
 public:
  enum Operator { OP_AND = 0, OP_OR = 1, OP_NOT = 2 };

  struct SubRule {
    SubRule() : m_operator(OP_OR) {}
    double match(std::map<std::string, unsigned int>& words, unsigned int count);

    int m_operator;
    std::set<std::string> m_keywords;
  };

  BasicRule(const std::string& classId, int topOperator);

  bool match(analyzer::TokenBuffer& tokens, double& score) override;
  bool match(std::map<std::string, unsigned int>& words, int count, double& score) override;
  bool getKeywords(std::set<std::string>& keywords) override;

  void addSubRule(const SubRule& subRule) { m_subRules.push_back(subRule); }
  bool hasSubRules() const { return !m_subRules.empty(); }
  int getTopOperator() const { return m_topOperator; }
  const std::vector<SubRule>& getSubRules() const { return m_subRules; }

  // The strength of a keyword found `count` times.
  static double keywordStrength(unsigned int count);

 protected:
  int m_topOperator;
  std::vector<SubRule> m_subRules;
};

}  // namespace modular
}  // namespace vortm

#endif
