#include "modular/Rule.h"

#include <cmath>

#include "utility/Utility.h"

namespace vortm {
namespace modular {

using analyzer::Token;
using analyzer::TokenBuffer;

bool Rule::isCountedWord(const Token& token) {
  return token.type == Token::TT_CH_WORD || token.type == Token::TT_USER_WORD ||
         (token.type == Token::TT_EN_WORD && token.term.size() >= 2 && token.term.size() <= 50 &&
          utility::Utility::isEnWord(token.term.data(), static_cast<unsigned int>(token.term.size())));
}

void Rule::countWords(TokenBuffer& tokens, std::map<std::string, unsigned int>& words, int& count) {
  count = 0;
  common::AutoPtr<TokenBuffer::Iterator> it = tokens.iterator();
  Token token;
  while (it->hasNext()) {
    it->next(token);
    if (!isCountedWord(token)) continue;
    ++count;
    if (token.tag == Token::TG_TARGET) ++words[token.term];
  }
}

BasicRule::BasicRule(const std::string& classId, int topOperator) : m_topOperator(topOperator) {
  m_label = trainset::Label(classId, "/");
}

double BasicRule::keywordStrength(unsigned int count) {
  double f = count;
  return f / (std::log10(f + 1.0) / std::log10(2.0));
}

double BasicRule::SubRule::match(std::map<std::string, unsigned int>& words, unsigned int count) {
  return value(m_operator, m_keywords.begin(), m_keywords.end(), m_keywords.size(), count,
               [&words](const std::string& keyword) -> const unsigned int* {
                 std::map<std::string, unsigned int>::const_iterator found = words.find(keyword);
                 return found == words.end() ? nullptr : &found->second;
               });
}

bool BasicRule::match(TokenBuffer& tokens, double& score) {
  if (m_subRules.empty()) return false;
  std::map<std::string, unsigned int> words;
  int count = 0;
  countWords(tokens, words, count);
  return match(words, count, score);
}

bool BasicRule::match(std::map<std::string, unsigned int>& words, int count, double& score) {
  return combine([&](size_t i) { return m_subRules[i].match(words, static_cast<unsigned int>(count)); }, score);
}

bool BasicRule::getKeywords(std::set<std::string>& keywords) {
  if (m_subRules.empty()) return false;
  for (const SubRule& sub : m_subRules) keywords.insert(sub.m_keywords.begin(), sub.m_keywords.end());
  return true;
}

}  // namespace modular
}  // namespace vortm
