#include "analyzer/UTF8CharacterLexer.h"

namespace vortm {
namespace analyzer {

int UTF8CharacterLexer::doLexer(unsigned int& offset, unsigned int& length) {
  if (!m_text) return -1;
  offset = m_offset;
  char c;
  if (!m_text->nextChar(c)) return 0;
  ++m_offset;
  unsigned char lead = static_cast<unsigned char>(c);
  unsigned int trail;
  if ((lead & 0x80) == 0x00 || (lead & 0xC0) == 0x80)
    trail = 0;  // ASCII, or a stray continuation byte standing alone
  else if ((lead & 0xE0) == 0xC0)
    trail = 1;
  else if ((lead & 0xF0) == 0xE0)
    trail = 2;
  else
    return -1;  // four-byte and longer leads are not supported
  for (unsigned int i = 0; i < trail; ++i) {
    if (!m_text->nextChar(c)) return -1;
    ++m_offset;
  }
  length = m_offset - offset;
  return 1;
}

}  // namespace analyzer
}  // namespace vortm
