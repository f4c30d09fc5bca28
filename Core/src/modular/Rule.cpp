#include "modular/Rule.h"

#include <cmath>

#include "utility/Utility.h"

namespace vortm {
namespace modular {

using analyzer::Token;
using analyzer::TokenBuffer;

void Rule::countWords(TokenBuffer& tokens, std::map<std::string, unsigned int>& words, int& count) {
  count = 0;
  common::AutoPtr<TokenBuffer::Iterator> it = tokens.iterator();
  Token token;
  while (it->hasNext()) {
    it->next(token);
    bool word = token.type == Token::TT_CH_WORD || token.type == Token::TT_USER_WORD ||
                (token.type == Token::TT_EN_WORD && token.term.size() >= 2 && token.term.size() <= 50 &&
                 utility::Utility::isEnWord(token.term.data(), static_cast<unsigned int>(token.term.size())));
    if (!word) continue;
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
  double s = 0.0;
  for (const std::string& keyword : m_keywords) {
    std::map<std::string, unsigned int>::const_iterator found = words.find(keyword);
    if (found == words.end()) {
      if (m_operator == OP_AND) return 0.0;
      continue;
    }
    if (m_operator == OP_NOT) return 0.0;
    double strength = keywordStrength(found->second);
    if (m_operator == OP_AND) {
      s = s > 1e-10 ? std::min(s, strength) : strength;
    } else {
      s += strength;
    }
  }
  if (m_operator == OP_NOT) return 1.0;
  if (m_operator == OP_OR && s > 1e-10) s /= std::sqrt(static_cast<double>(m_keywords.size()) + 1.0);
  return s / std::sqrt(static_cast<double>(count) + 1.0);
}

bool BasicRule::match(TokenBuffer& tokens, double& score) {
  if (m_subRules.empty()) return false;
  std::map<std::string, unsigned int> words;
  int count = 0;
  countWords(tokens, words, count);
  return match(words, count, score);
}

bool BasicRule::match(std::map<std::string, unsigned int>& words, int count, double& score) {
  if (m_subRules.empty()) return false;
  score = 0.0;
  if (m_topOperator != OP_AND && m_topOperator != OP_OR) return true;
  for (size_t i = 0; i < m_subRules.size(); ++i) {
    SubRule& sub = m_subRules[i];
    double v = sub.match(words, static_cast<unsigned int>(count));
    if (sub.m_operator == OP_NOT) {
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

bool BasicRule::getKeywords(std::set<std::string>& keywords) {
  if (m_subRules.empty()) return false;
  for (const SubRule& sub : m_subRules) keywords.insert(sub.m_keywords.begin(), sub.m_keywords.end());
  return true;
}

}  // namespace modular
}  // namespace vortm
