#include "modular/RuleParser.h"

#include "configure/BasicParamParser.h"
#include "utility/Utility.h"

namespace vortm {
namespace modular {

using common::AutoPtr;
using configure::Parameter;

bool BasicRuleParser::parseRuleFromText(const std::string& text, std::vector<AutoPtr<Rule> >& rules) {
  configure::BasicParamParser parser;
  AutoPtr<Parameter> root;
  if (!parser.doParseFromText(text, root) || !root) return false;
  return parseRule(*root, rules);
}

bool BasicRuleParser::parseRuleFromFile(const std::string& path, std::vector<AutoPtr<Rule> >& rules) {
  configure::BasicParamParser parser;
  AutoPtr<Parameter> root;
  if (!parser.doParse(path, root) || !root) return false;
  return parseRule(*root, rules);
}

bool BasicRuleParser::parseRule(const Parameter& param, std::vector<AutoPtr<Rule> >& rules) {
  const Parameter& list = param["rules"];
  for (int i = 0; !list[i].isNull(); ++i) {
    const Parameter& entry = list[i];
    std::string classId, top;
    if (!entry["classid"].getStringValue(classId) || !entry["toprule"].getStringValue(top)) return false;
    BasicRule* rule = new BasicRule(classId, top == "AND" ? BasicRule::OP_AND : BasicRule::OP_OR);
    AutoPtr<Rule> owner(rule, true);

    const Parameter& subrules = entry["subrules"];
    for (int j = 0; !subrules[j].isNull(); ++j) {
      std::string op, value;
      if (!subrules[j]["operator"].getStringValue(op) || !subrules[j]["value"].getStringValue(value)) return false;
      std::vector<std::string> parts;
      utility::Utility::strTokenize(op, "/", parts);
      if (parts.size() != 3 || (parts[1] != "TEXT" && parts[1] != "TITLE" && parts[1] != "CONTENT")) continue;
      BasicRule::SubRule sub;
      sub.m_operator = parts[0] == "AND" ? BasicRule::OP_AND : parts[0] == "NOT" ? BasicRule::OP_NOT : BasicRule::OP_OR;
      std::vector<std::string> words;
      utility::Utility::strTokenize(value, words, ',');
      sub.m_keywords.insert(words.begin(), words.end());
      rule->addSubRule(sub);
    }
    if (!rule->hasSubRules()) return false;
    rules.push_back(owner);
  }
  return !rules.empty();
}

}  // namespace modular
}  // namespace vortm
