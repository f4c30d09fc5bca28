// Arbitrary bytes as a rule file. Whatever parses must match without
// trouble: a text made of its own keywords gives a finite, non-negative
// strength, the same through a token buffer as through a word map.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "analyzer/TokenBuffer.h"
#include "configure/BasicParamParser.h"
#include "modular/RuleParser.h"

using vortm::analyzer::Token;
using vortm::common::AutoPtr;
using vortm::modular::BasicRuleParser;
using vortm::modular::Rule;

namespace {

// A block asked for its own name stops the process by design. The parser
// asks the children of "rules" and "subrules" blocks for these names, so a
// tree where such a child bears one of them is left out.
bool asksABlockItsOwnName(const vortm::configure::Parameter& node, const std::string& name) {
  static const std::set<std::string> asked = {"classid", "toprule", "subrules", "operator", "value"};
  for (unsigned int i = 0; i < node.size(); ++i) {
    const std::string child = node.getSubParamName(i);
    if ((name == "rules" || name == "subrules") && asked.count(child)) return true;
    if (asksABlockItsOwnName(node[static_cast<int>(i)], child)) return true;
  }
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static bool once = (vortm::fuzzing::silenceOutput(), true);
  (void)once;
  // Nesting depth costs recursion in the tree; keep inputs small.
  if (size > (1 << 14)) return 0;
  std::string text(reinterpret_cast<const char*>(data), size);
  {
    vortm::configure::BasicParamParser tree;
    AutoPtr<vortm::configure::Parameter> root;
    if (tree.doParseFromText(text, root) && root && asksABlockItsOwnName(*root, "")) return 0;
  }
  BasicRuleParser parser;
  std::vector<AutoPtr<Rule> > rules;
  bool ok = parser.parseRuleFromText(text, rules);
  FUZZ_CHECK(!ok || !rules.empty());
  for (const AutoPtr<Rule>& rule : rules) {
    std::set<std::string> keywords;
    FUZZ_CHECK(rule->getKeywords(keywords));
    // Every other keyword present, the n-th one n times.
    vortm::analyzer::TokenBuffer buffer;
    std::map<std::string, unsigned int> words;
    unsigned int n = 0;
    for (const std::string& k : keywords) {
      if (++n % 2 == 0 || k.size() > 1000) continue;
      for (unsigned int i = 0; i < n % 5 + 1; ++i) {
        vortm::analyzer::appendToken(buffer, Token(k, 0, 0, Token::TT_USER_WORD, Token::TG_TARGET));
        ++words[k];
      }
    }
    int count = 0;
    for (const auto& w : words) count += static_cast<int>(w.second);
    double fromMap = -1.0, fromBuffer = -1.0;
    FUZZ_CHECK(rule->match(words, count, fromMap));
    FUZZ_CHECK(rule->match(buffer, fromBuffer));
    FUZZ_CHECK(std::isfinite(fromMap) && fromMap >= 0.0);
    FUZZ_CHECK(fromMap == fromBuffer);
  }
  return 0;
}
