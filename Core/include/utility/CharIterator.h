#ifndef VORTM_UTILITY_CHARITERATOR_H
#define VORTM_UTILITY_CHARITERATOR_H

#include <string>

#include "utility/BufferPool.h"
#include "utility/BufferedFileReader.h"

namespace vortm {
namespace utility {

// Byte-by-byte input, over a file or a text.
class CharIterator {
 public:
  virtual ~CharIterator() {}
  virtual bool nextChar(char& c) = 0;
  // Skips "\r", " ", "\t" and "\n"; false at the end.
  bool nextCharNonWhitespace(char& c);
};

class CharIteratorFile : public CharIterator {
 public:
  CharIteratorFile();
  virtual ~CharIteratorFile();

  bool setFile(const std::string& path);
  bool nextChar(char& c) override;
  // Why setFile failed; empty after a successful one.
  const std::string& getOpenError() const { return m_reader.getOpenError(); }

 private:
  BufferedFileReader m_reader;
};

// Holds a private copy of the text, so the caller's buffer need not outlive
// setText.
class CharIteratorText : public CharIterator {
 public:
  CharIteratorText();
  virtual ~CharIteratorText();

  void setText(const char* text, unsigned int length);
  void setText(const std::string& text);
  bool nextChar(char& c) override;

 private:
  BufferPool m_pool;
};

}  // namespace utility
}  // namespace vortm

#endif
