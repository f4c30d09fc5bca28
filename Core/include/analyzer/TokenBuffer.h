#ifndef VORTM_ANALYZER_TOKENBUFFER_H
#define VORTM_ANALYZER_TOKENBUFFER_H

#include "analyzer/Token.h"
#include "common/AutoPtr.h"
#include "utility/BufferPool.h"

namespace vortm {
namespace analyzer {

// Tokens cross the stages of the analyzer as serialised records in one
// growing block rather than as objects. A record is the term as a String,
// start and end as 32-bit integers, then type and tag as 4 raw bytes each.
// The buffer keeps what was read, so it can be read more than once.
class TokenBuffer : public utility::BufferPool {
 public:
  class Iterator {
   public:
    explicit Iterator(TokenBuffer* buffer) : m_pBuffer(buffer), pending(nullptr) {}
    Iterator(const Iterator&) = delete;
    Iterator& operator=(const Iterator&) = delete;

    // Decodes the next record ahead; a truncated record ends the iteration.
    bool hasNext();
    // Hands out the record decoded by hasNext(), which must come first.
    void next(Token& token);
    // hasNext() and next() in one, decoding straight into `token`, whose
    // term keeps its capacity from record to record; false at the end.
    bool readNext(Token& token);

   private:
    // Decodes the record at the read position into `token` and moves past
    // it; false, with `token` untouched, at the end or a truncated record.
    bool decode(Token& token);

    TokenBuffer* m_pBuffer;
    // The record decoded ahead, or null; it lives in m_slot, which is reused
    // for every record so that reading allocates nothing per token.
    Token* pending;
    Token m_slot;
  };

  TokenBuffer() : utility::BufferPool(true) {}

  // Starts reading over from the first record; any earlier iterator of this
  // buffer is rewound as well, since they share the read position.
  common::AutoPtr<Iterator> iterator();
  // The number of whole records, counted without decoding them and without
  // moving the read position.
  size_t countRecords() const;
};

// Every writer of token records goes through these, so the field order lives
// in one place.
void appendToken(utility::BufferPool& buffer, const Token& token);
void appendToken(utility::BufferPool& buffer, const char* bytes, unsigned int length, int start, int end,
                 Token::TType type, Token::TTag tag);

}  // namespace analyzer
}  // namespace vortm

#endif
