#ifndef VORTM_MODULAR_RULESET_H
#define VORTM_MODULAR_RULESET_H

#include <string>
#include <unordered_map>
#include <vector>

#include "analyzer/Tokenizer.h"
#include "common/AutoPtr.h"
#include "configure/Parameter.h"
#include "modular/Rule.h"
#include "modular/TextAnalyzer.h"

namespace vortm {
namespace modular {

// Rules together with the analysis they need. Rules count only words tagged
// as keywords, so the keywords of all rules go into a dictionary tokenizer
// put in front of the configured analyzer's chain: there they win over the
// analyzer's own segmentation and come out as user words tagged 25. The
// configured analyzer itself is left as it was. Once configured, matchText
// only reads, and many threads may call it at once.
class RuleSet {
 public:
  struct Match {
    std::string classId;
    double strength;
  };

  RuleSet();

  // `analyzerParam` is the element that holds "analyzer" (a classifier's
  // "text_analyzer"). Logs "Failed to Parse Rule File" with the path, or
  // "Failed to Init Text Analyzer", and answers false.
  bool config(const configure::Parameter& analyzerParam, const std::string& rulesPath);
  // The same with rules already parsed.
  bool config(const configure::Parameter& analyzerParam, const std::vector<common::AutoPtr<Rule> >& rules);

  // The rules of positive strength, strongest first (ties in file order).
  bool matchText(const std::string& text, std::vector<Match>& matches) const;
  // The same for tokens already made with this set's tokenizer.
  void matchTokens(analyzer::TokenBuffer& tokens, std::vector<Match>& matches) const;
  bool tokenize(const std::string& text, analyzer::TokenBuffer& tokens) const;

  size_t ruleCount() const { return m_rules.size(); }
  size_t keywordCount() const { return m_keywordCount; }

 private:
  // Each keyword of the rules gets a number; a basic rule keeps, per
  // subrule, the numbers of its keywords in set order, so a text's keyword
  // counts are an array lookup and only the rules of a keyword present in
  // the text are looked at. Rules of other kinds match on a word map.
  struct Compiled {
    const BasicRule* rule;  // null for a rule of another kind
    std::vector<std::vector<unsigned int> > subRuleKeywords;
  };
  void compile();

  std::vector<common::AutoPtr<Rule> > m_rules;
  std::vector<Compiled> m_compiled;
  std::unordered_map<std::string, unsigned int> m_keywordIds;
  std::vector<std::vector<unsigned int> > m_rulesOfKeyword;
  std::vector<unsigned int> m_otherRules;
  common::AutoPtr<TextAnalyzer> m_textAnalyzerPtr;
  common::AutoPtr<analyzer::Tokenizer> m_headPtr;
  size_t m_keywordCount;
};

}  // namespace modular
}  // namespace vortm

#endif
