#ifndef VORTM_MODULAR_SENTILABEL_H
#define VORTM_MODULAR_SENTILABEL_H

#include <string>
#include <vector>

#include "analyzer/Token.h"

namespace vortm {
namespace modular {

// One word of an opinion with the modifiers (degree words, negations) found
// around it. The word's own fields are those of the token it came from.
class Unit : public analyzer::Token {
 public:
  Unit() : flag(0), position(-1) {}

  void reset();
  // Takes the word's text, offsets, type and tag; the modifier lists stay.
  void setWord(const analyzer::Token& token, int index);
  bool isEmpty() const { return startOffset == -1; }

  // A zero-degree word (tag 14) before the word wipes its polarity out.
  bool isPolarityErase() const;
  // An odd count of negations, looked for in `before`, or in `after` only
  // when nothing stands before the word.
  bool isNegation() const;
  // Modifiers before, the word, modifiers after, with no separator.
  std::string toString() const;

  std::vector<analyzer::Token> before;
  std::vector<analyzer::Token> after;
  int flag;
  // Index of the word in the token sequence.
  int position;
};

// An opinion: an attribute and a sentiment word, either of which may be
// empty.
class SentiLabel {
 public:
  SentiLabel() : position(-1), startOffset(-1), endOffset(-1), flag(0) {}
  virtual ~SentiLabel() {}

  // First and last byte of the label, counting the first modifier before
  // each word; -1 for a label with neither side.
  virtual int getStartOffsetInternal() const;
  virtual int getEndOffsetInternal() const;

  Unit att;
  Unit senti;
  // Index of the token whose position weight the label takes; filled by
  // the scorer when it first needs it.
  int position;
  // Reserved; nothing fills them yet.
  int startOffset;
  int endOffset;
  int flag;
};

}  // namespace modular
}  // namespace vortm

#endif
