#include "analyzer/TokenBuffer.h"

#include <cstring>
#include <utility>

namespace vortm {
namespace analyzer {

common::AutoPtr<TokenBuffer::Iterator> TokenBuffer::iterator() {
  readOffset = 0;
  readPtr = buffer;
  return common::AutoPtr<Iterator>(new Iterator(this), true);
}

size_t TokenBuffer::countRecords() const {
  const unsigned long fixed = 4 * sizeof(int);
  size_t count = 0;
  for (unsigned long at = 0; writeOffset - at >= 4; ++count) {
    int length = 0;
    std::memcpy(&length, buffer + at, 4);
    if (length < 0 || writeOffset - at - 4 < static_cast<unsigned long>(length) + fixed) break;
    at += 4 + static_cast<unsigned long>(length) + fixed;
  }
  return count;
}

bool TokenBuffer::Iterator::hasNext() {
  if (pending) return true;
  if (!decode(m_slot)) return false;
  pending = &m_slot;
  return true;
}

bool TokenBuffer::Iterator::readNext(Token& token) {
  if (!pending) return decode(token);
  next(token);
  return true;
}

bool TokenBuffer::Iterator::decode(Token& token) {
  // A record is decoded straight from the pool's memory: the term with its
  // stored length, so that a zero byte inside it survives, then the two
  // offsets, the type and the tag. A record cut short at the end of the data
  // is no record.
  TokenBuffer& pool = *m_pBuffer;
  const unsigned long left = pool.writeOffset - pool.readOffset;
  const unsigned char* p = pool.readPtr;
  int length = 0;
  if (left < 4) return false;
  std::memcpy(&length, p, 4);
  const unsigned long fixed = 4 * sizeof(int);
  if (length < 0 || left - 4 < static_cast<unsigned long>(length) + fixed) return false;
  token.term.assign(reinterpret_cast<const char*>(p + 4), static_cast<std::string::size_type>(length));
  p += 4 + length;
  std::memcpy(&token.startOffset, p, 4);
  std::memcpy(&token.endOffset, p + 4, 4);
  std::memcpy(&token.type, p + 8, sizeof(Token::TType));
  std::memcpy(&token.tag, p + 12, sizeof(Token::TTag));
  pool.readOffset += 4 + static_cast<unsigned long>(length) + fixed;
  pool.readPtr = pool.buffer + pool.readOffset;
  return true;
}

void TokenBuffer::Iterator::next(Token& token) {
  if (!pending) return;
  token = std::move(*pending);
  pending = nullptr;
}

void appendToken(utility::BufferPool& buffer, const Token& token) {
  appendToken(buffer, token.term.data(), static_cast<unsigned int>(token.term.size()), token.startOffset,
              token.endOffset, token.type, token.tag);
}

void appendToken(utility::BufferPool& buffer, const char* bytes, unsigned int length, int start, int end,
                 Token::TType type, Token::TTag tag) {
  // The five fields go in with one claim on the pool, laid out exactly as
  // the single writes would put them.
  const unsigned int startBits = static_cast<unsigned int>(start);
  const unsigned int endBits = static_cast<unsigned int>(end);
  unsigned char* at = buffer.claimWrite(4UL + length + 8 + sizeof(Token::TType) + sizeof(Token::TTag));
  std::memcpy(at, &length, 4);
  if (length) std::memcpy(at + 4, bytes, length);
  at += 4 + length;
  std::memcpy(at, &startBits, 4);
  std::memcpy(at + 4, &endBits, 4);
  std::memcpy(at + 8, &type, sizeof(Token::TType));
  std::memcpy(at + 8 + sizeof(Token::TType), &tag, sizeof(Token::TTag));
}

}  // namespace analyzer
}  // namespace vortm
