#ifndef VORTM_ANALYZER_DICT_H
#define VORTM_ANALYZER_DICT_H

#include <string>

#include "analyzer/TokenBuffer.h"

namespace vortm {
namespace analyzer {

// A word store that dictionary tokenizers segment with. A word's 16-bit value
// carries the token type in its high byte and the tag in its low byte.
class Dict {
 public:
  virtual ~Dict() {}
  virtual bool saveTo(const std::string& file) = 0;
  virtual bool loadFrom(const std::string& file) = 0;
  virtual bool insert(const std::string& word, unsigned short value) = 0;
  virtual bool contain(const std::string& word) = 0;
  // Segments `length` bytes of `text` into `out`; pForwardRefBuf holds each
  // character's byte length at its first byte, and `base` is added to every
  // offset written.
  virtual bool match(const char* text, unsigned int length, unsigned int* pForwardRefBuf, TokenBuffer& out,
                     unsigned int base) = 0;
};

}  // namespace analyzer
}  // namespace vortm

#endif
