#include "analyzer/CharacterLexer.h"

namespace vortm {
namespace analyzer {

void CharacterLexer::setText(const std::string& text) {
  setText(text.data(), static_cast<unsigned int>(text.size()));
}

void CharacterLexer::setText(const char* text, unsigned int length) {
  m_offset = 0;
  // The iterator and its block are reused from one text to the next.
  if (!m_text) m_text = new utility::CharIteratorText();
  m_text->setText(text, length);
}

}  // namespace analyzer
}  // namespace vortm
