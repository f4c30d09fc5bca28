#ifndef VORTM_ANALYZER_CHARACTERLEXER_H
#define VORTM_ANALYZER_CHARACTERLEXER_H

#include <string>

#include "common/AutoPtr.h"
#include "utility/CharIterator.h"

namespace vortm {
namespace analyzer {

// Cuts a byte string into the characters of one encoding without decoding
// them. A lexer is a cursor over a private copy of the text, so it must not
// be shared between threads.
class CharacterLexer {
 public:
  CharacterLexer() : m_offset(0) {}
  virtual ~CharacterLexer() {}

  virtual void setText(const std::string& text);
  virtual void setText(const char* text, unsigned int length);
  // Consumes one character: 1 with its first byte and byte count, 0 at the
  // end of the text, -1 on failure (no text yet, or a broken sequence).
  virtual int doLexer(unsigned int& offset, unsigned int& length) = 0;

 protected:
  unsigned int m_offset;
  common::AutoPtr<utility::CharIteratorText> m_text;
};

}  // namespace analyzer
}  // namespace vortm

#endif
