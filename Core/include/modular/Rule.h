#ifndef VORTM_MODULAR_RULE_H
#define VORTM_MODULAR_RULE_H

#include <algorithm>
#include <cmath>
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
  // Whether a token counts towards the length of the text.
  static bool isCountedWord(const analyzer::Token& token);

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

    // The value over keywords given in set order; `countOf` answers the
    // count of one of them, or null when it is absent. Shared by the word
    // map above and by callers that keep counts by keyword number.
    template <class Iter, class CountOf>
    static double value(int op, Iter first, Iter last, size_t keywords, unsigned int count, CountOf countOf);

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

  // Folds the subrule values, valueOf(i) for subrule i, by the operators:
  // what match() on a word map does once it has the values.
  template <class ValueOf>
  bool combine(ValueOf valueOf, double& score) const;

 protected:
  int m_topOperator;
  std::vector<SubRule> m_subRules;
};

template <class Iter, class CountOf>
double BasicRule::SubRule::value(int op, Iter first, Iter last, size_t keywords, unsigned int count,
                                 CountOf countOf) {
  double s = 0.0;
  for (; first != last; ++first) {
    const unsigned int* f = countOf(*first);
    if (!f) {
      if (op == OP_AND) return 0.0;
      continue;
    }
    if (op == OP_NOT) return 0.0;
    double strength = keywordStrength(*f);
    if (op == OP_AND) {
      s = s > 1e-10 ? std::min(s, strength) : strength;
    } else {
      s += strength;
    }
  }
  if (op == OP_NOT) return 1.0;
  if (op == OP_OR && s > 1e-10) s /= std::sqrt(static_cast<double>(keywords) + 1.0);
  return s / std::sqrt(static_cast<double>(count) + 1.0);
}

template <class ValueOf>
bool BasicRule::combine(ValueOf valueOf, double& score) const {
  if (m_subRules.empty()) return false;
  score = 0.0;
  if (m_topOperator != OP_AND && m_topOperator != OP_OR) return true;
  for (size_t i = 0; i < m_subRules.size(); ++i) {
    double v = valueOf(i);
    if (m_subRules[i].m_operator == OP_NOT) {
      // A NOT that fails vetoes the rule; one that holds adds nothing.
      if (v < 0.5) {
        score = 0.0;
        return true;
      }
    } else if (m_topOperator == OP_AND) {
      if (i == 0 || score > v) score = v;
    } else {
      if (i == 0 || v > score) score = v;
    }
  }
  return true;
}

}  // namespace modular
}  // namespace vortm

#endif
