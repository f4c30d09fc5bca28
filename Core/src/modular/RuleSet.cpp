#include "modular/RuleSet.h"

#include <algorithm>
#include <map>
#include <set>
#include <typeinfo>

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
  compile();
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

void RuleSet::compile() {
  m_compiled.assign(m_rules.size(), Compiled{nullptr, {}});
  m_keywordIds.clear();
  m_rulesOfKeyword.clear();
  m_otherRules.clear();
  for (unsigned int r = 0; r < m_rules.size(); ++r) {
    Rule* rule = m_rules[r].get();
    // A subclass of BasicRule may match differently, so only the class itself.
    if (!rule || typeid(*rule) != typeid(BasicRule)) {
      if (rule) m_otherRules.push_back(r);
      continue;
    }
    Compiled& compiled = m_compiled[r];
    compiled.rule = static_cast<const BasicRule*>(rule);
    for (const BasicRule::SubRule& sub : compiled.rule->getSubRules()) {
      compiled.subRuleKeywords.emplace_back();
      for (const std::string& keyword : sub.m_keywords) {
        auto added = m_keywordIds.emplace(keyword, static_cast<unsigned int>(m_rulesOfKeyword.size()));
        if (added.second) m_rulesOfKeyword.emplace_back();
        std::vector<unsigned int>& owners = m_rulesOfKeyword[added.first->second];
        if (owners.empty() || owners.back() != r) owners.push_back(r);
        compiled.subRuleKeywords.back().push_back(added.first->second);
      }
    }
  }
}

bool RuleSet::tokenize(const std::string& text, TokenBuffer& tokens) const {
  if (!m_headPtr) return false;
  return text.empty() || m_headPtr.get()->doTokenize(text, tokens, true, 0);
}

void RuleSet::matchTokens(TokenBuffer& tokens, std::vector<Match>& matches) const {
  matches.clear();
  // Counts by keyword number, kept per thread and zeroed again after use, so
  // that a text costs no allocation however many keywords the rules have.
  thread_local std::vector<unsigned int> counts;
  if (counts.size() < m_rulesOfKeyword.size()) counts.resize(m_rulesOfKeyword.size(), 0);
  std::vector<unsigned int> present;
  std::map<std::string, unsigned int> words;  // only for rules of other kinds
  int count = 0;
  common::AutoPtr<TokenBuffer::Iterator> it = tokens.iterator();
  Token token;
  while (it->hasNext()) {
    it->next(token);
    if (!Rule::isCountedWord(token)) continue;
    ++count;
    if (token.tag != Token::TG_TARGET) continue;
    if (!m_otherRules.empty()) ++words[token.term];
    auto id = m_keywordIds.find(token.term);
    if (id != m_keywordIds.end() && counts[id->second]++ == 0) present.push_back(id->second);
  }
  // No keyword, no rule of positive strength: every rule needs one present.
  if (present.empty() && words.empty()) return;

  std::vector<unsigned int> candidates = m_otherRules;
  for (unsigned int id : present)
    candidates.insert(candidates.end(), m_rulesOfKeyword[id].begin(), m_rulesOfKeyword[id].end());
  std::sort(candidates.begin(), candidates.end());
  candidates.erase(std::unique(candidates.begin(), candidates.end()), candidates.end());
  const unsigned int* countsOf = counts.data();
  auto countOf = [countsOf](unsigned int id) { return countsOf[id] ? &countsOf[id] : nullptr; };
  for (unsigned int r : candidates) {
    const Compiled& compiled = m_compiled[r];
    double score = 0.0;
    bool ok;
    if (compiled.rule) {
      const std::vector<BasicRule::SubRule>& subs = compiled.rule->getSubRules();
      ok = compiled.rule->combine(
          [&](size_t i) {
            const std::vector<unsigned int>& ids = compiled.subRuleKeywords[i];
            return BasicRule::SubRule::value(subs[i].m_operator, ids.begin(), ids.end(), ids.size(),
                                             static_cast<unsigned int>(count), countOf);
          },
          score);
    } else {
      ok = m_rules[r].get()->match(words, count, score);
    }
    if (ok && score > 1e-10) matches.push_back(Match{m_rules[r].get()->getLabel().identifier, score});
  }
  for (unsigned int id : present) counts[id] = 0;
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
