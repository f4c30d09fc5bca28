#include "modular/SentiLabel.h"

#include <algorithm>

namespace vortm {
namespace modular {

using analyzer::Token;

void Unit::reset() {
  term.clear();
  startOffset = -1;
  endOffset = -1;
  type = Token::TT_SYMBOL;
  tag = Token::TG_PLAIN;
  before.clear();
  after.clear();
  flag = 0;
  position = -1;
}

void Unit::setWord(const Token& token, int index) {
  term = token.term;
  startOffset = token.startOffset;
  endOffset = token.endOffset;
  type = token.type;
  tag = token.tag;
  position = index;
}

bool Unit::isPolarityErase() const {
  for (const Token& t : before)
    if (t.tag == Token::TG_DEGREE_14) return true;
  return false;
}

bool Unit::isNegation() const {
  const std::vector<Token>& side = before.empty() ? after : before;
  int count = 0;
  for (const Token& t : side)
    if (t.tag == Token::TG_NEGATION || t.tag == Token::TG_EN_NEGATION) ++count;
  return count % 2 == 1;
}

std::string Unit::toString() const {
  std::string out;
  if (isEmpty()) return out;
  for (const Token& t : before) out += t.term;
  out += term;
  for (const Token& t : after) out += t.term;
  return out;
}

namespace {

// -1 counts as "no offset" on either side.
int combine(int a, int b, bool smaller) {
  if (a == -1) return b;
  if (b == -1) return a;
  return smaller ? std::min(a, b) : std::max(a, b);
}

int startOf(const Unit& u) {
  if (u.before.empty()) return u.startOffset;
  return std::min(u.startOffset, u.before.front().startOffset);
}

// Only the first modifier before the word is looked at, never those after.
int endOf(const Unit& u) {
  if (u.before.empty()) return u.endOffset;
  return std::max(u.endOffset, u.before.front().endOffset);
}

}  // namespace

int SentiLabel::getStartOffsetInternal() const { return combine(startOf(att), startOf(senti), true); }

int SentiLabel::getEndOffsetInternal() const { return combine(endOf(att), endOf(senti), false); }

}  // namespace modular
}  // namespace vortm
