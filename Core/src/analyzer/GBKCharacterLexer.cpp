#include "analyzer/GBKCharacterLexer.h"

namespace vortm {
namespace analyzer {

int GBKCharacterLexer::doLexer(unsigned int& offset, unsigned int& length) {
  if (!m_text) return -1;
  offset = m_offset;
  char c;
  if (!m_text->nextChar(c)) return 0;
  ++m_offset;
  if (static_cast<unsigned char>(c) & 0x80) {
    if (!m_text->nextChar(c)) return -1;
    ++m_offset;
  }
  length = m_offset - offset;
  return 1;
}

}  // namespace analyzer
}  // namespace vortm
