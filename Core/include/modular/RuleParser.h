#ifndef VORTM_MODULAR_RULEPARSER_H
#define VORTM_MODULAR_RULEPARSER_H

#include <string>
#include <vector>

#include "common/AutoPtr.h"
#include "common/InstanceCreator.h"
#include "configure/Parameter.h"
#include "modular/Rule.h"

namespace vortm {
namespace modular {

class RuleParser {
 public:
  virtual ~RuleParser() {}
  virtual bool parseRuleFromText(const std::string& text, std::vector<common::AutoPtr<Rule> >& rules) = 0;
  virtual bool parseRuleFromFile(const std::string& path, std::vector<common::AutoPtr<Rule> >& rules) = 0;
};

// Rules from XML:
//   <rules>
//     <rule>
//       <classid>complaint/delivery</classid>
//       <toprule>OR</toprule>
//       <subrules>
//         <subrule><operator>OR/TEXT/any</operator><value>slow, late</value></subrule>
//       </subrules>
//     </rule>
//   </rules>
// "toprule" is AND, or OR for anything else. "operator" is three parts
// joined by "/": AND, NOT or (anything else) OR; the field TEXT, TITLE or
// CONTENT; a third part that must be there and is not read. A subrule with
// another field or shape is skipped. Keywords are split at blanks and commas.
// Results are told by the return value only; rules parsed before a failing
// entry stay in `rules`.
class BasicRuleParser : public RuleParser {
 public:
  bool parseRuleFromText(const std::string& text, std::vector<common::AutoPtr<Rule> >& rules) override;
  bool parseRuleFromFile(const std::string& path, std::vector<common::AutoPtr<Rule> >& rules) override;
  bool parseRule(const configure::Parameter& param, std::vector<common::AutoPtr<Rule> >& rules);
};

// Hosts that want the parser by name construct this creator themselves; the
// library's own registration leaves it out.
VORTM_DECLARE_CREATOR(BasicRuleParserCreator, RuleParser, BasicRuleParser, "basic_parser");

}  // namespace modular
}  // namespace vortm

#endif
