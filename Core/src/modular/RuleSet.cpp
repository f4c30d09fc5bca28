#include "modular/RuleSet.h"

#include <algorithm>
#include <map>
#include <set>

#include "analyzer/TrieDict.h"
#include "analyzer/TrieDictMaxForwardTokenizer.h"
#include "common/CreatorRegister.h"
#include "common/Logger.h"
#include "modular/RuleParser.h"

namespace vortm {
namespace modular {

using analyzer::Token;
using analyzer::TokenBuffer;
using common::AutoPtr;
using common::gfn_pLoggerInstance;
using configure::Parameter;

RuleSet::RuleSet() : m_keywordCount(0) {}

bool RuleSet::config(const Parameter& analyzerParam, const std::string& rulesPath) {
  std::vector<AutoPtr<Rule> > rules;
  BasicRuleParser parser;
  if (!parser.parseRuleFromFile(rulesPath, rules)) {
    gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Parse Rule File" + rulesPath);
    return false;
  }
  return config(analyzerParam, rules);
}

bool RuleSet::config(const Parameter& analyzerParam, const std::vector<AutoPtr<Rule> >& rules) {
  common::gfn_creatorRegister();
  m_rules = rules;
  m_headPtr = AutoPtr<analyzer::Tokenizer>();
  if (!TextAnalyzer::configTextAnalyzer(analyzerParam, m_textAnalyzerPtr)) {
    gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Init Text Analyzer");
    return false;
  }
  AutoPtr<analyzer::Analyzer> analyzer = m_textAnalyzerPtr->getAnalyzer();
  std::string encode = analyzer->getEncode();
  std::string lower = encode;
  utility::Utility::toLowcase(lower);
  AutoPtr<analyzer::Dict> dict;
  if (lower == "gbk" || lower == "gb2312")
    dict = AutoPtr<analyzer::Dict>(new analyzer::TrieDict<unsigned short>("basicGBKLexer"), true);
  else
    dict = AutoPtr<analyzer::Dict>(new analyzer::TrieDict<unsigned int>("basicUTF8Lexer"), true);

  std::set<std::string> keywords;
  for (const AutoPtr<Rule>& rule : m_rules) rule->getKeywords(keywords);
  const unsigned short value = static_cast<unsigned short>((Token::TT_USER_WORD << 8) | Token::TG_TARGET);
  for (const std::string& word : keywords)
    if (!word.empty()) dict->insert(word, value);
  m_keywordCount = keywords.size();

  AutoPtr<analyzer::Tokenizer> head(new analyzer::TrieDictMaxForwardTokenizer(dict), true);
  std::map<std::string, std::string> param;
  param["encode"] = encode.empty() ? "utf-8" : encode;
  if (!head->config(param)) return false;
  if (analyzer->getTokenizer()) head->attachPostTokenizer(analyzer->getTokenizer());
  m_headPtr = head;
  return true;
}

bool RuleSet::tokenize(const std::string& text, TokenBuffer& tokens) const {
  if (!m_headPtr) return false;
  return text.empty() || m_headPtr.get()->doTokenize(text, tokens, true, 0);
}

void RuleSet::matchTokens(TokenBuffer& tokens, std::vector<Match>& matches) const {
  matches.clear();
  std::map<std::string, unsigned int> words;
  int count = 0;
  Rule::countWords(tokens, words, count);
  // No keyword, no rule of positive strength: every rule needs one present.
  if (words.empty()) return;
  for (const AutoPtr<Rule>& rule : m_rules) {
    double score = 0.0;
    if (rule.get()->match(words, count, score) && score > 1e-10)
      matches.push_back(Match{rule.get()->getLabel().identifier, score});
  }
  std::stable_sort(matches.begin(), matches.end(),
                   [](const Match& a, const Match& b) { return a.strength > b.strength; });
}

bool RuleSet::matchText(const std::string& text, std::vector<Match>& matches) const {
  matches.clear();
  TokenBuffer tokens;
  if (!tokenize(text, tokens)) return false;
  matchTokens(tokens, matches);
  return true;
}

}  // namespace modular
}  // namespace vortm
