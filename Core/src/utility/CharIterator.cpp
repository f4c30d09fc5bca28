#include "utility/CharIterator.h"

namespace vortm {
namespace utility {

bool CharIterator::nextCharNonWhitespace(char& c) {
  while (nextChar(c)) {
    if (c != '\r' && c != ' ' && c != '\t' && c != '\n') return true;
  }
  return false;
}

CharIteratorFile::CharIteratorFile() : m_reader(false) {}

CharIteratorFile::~CharIteratorFile() {}

bool CharIteratorFile::setFile(const std::string& path) { return m_reader.open(path); }

bool CharIteratorFile::nextChar(char& c) {
  unsigned char b;
  if (!m_reader.readByte(b)) return false;
  c = static_cast<char>(b);
  return true;
}

CharIteratorText::CharIteratorText() : m_pool(true) {}

CharIteratorText::~CharIteratorText() {}

void CharIteratorText::setText(const char* text, unsigned int length) {
  // Drop a block grown by one large text instead of keeping it forever.
  if (m_pool.getCapacity() <= 1048576) {
    m_pool.reset();
  } else {
    m_pool.reInit();
  }
  if (text != nullptr && length != 0) m_pool.writeBytes(text, length);
}

void CharIteratorText::setText(const std::string& text) {
  setText(text.data(), static_cast<unsigned int>(text.size()));
}

bool CharIteratorText::nextChar(char& c) {
  unsigned char b;
  if (!m_pool.readByte(b)) return false;
  c = static_cast<char>(b);
  return true;
}

}  // namespace utility
}  // namespace vortm
