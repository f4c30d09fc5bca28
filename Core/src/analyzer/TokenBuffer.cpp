#include "analyzer/TokenBuffer.h"

namespace vortm {
namespace analyzer {

common::AutoPtr<TokenBuffer::Iterator> TokenBuffer::iterator() {
  readOffset = 0;
  readPtr = buffer;
  return common::AutoPtr<Iterator>(new Iterator(this), true);
}

bool TokenBuffer::Iterator::hasNext() {
  if (pending) return true;
  Token* token = new Token();
  // The term is taken with its stored length, so a zero byte inside it
  // survives the round trip.
  char* bytes = nullptr;
  int length = 0;
  bool ok = m_pBuffer->readString(bytes, length);
  if (ok) {
    token->term.assign(bytes, static_cast<std::string::size_type>(length));
    delete[] bytes;
    ok = m_pBuffer->readInt32(token->startOffset) && m_pBuffer->readInt32(token->endOffset) &&
         m_pBuffer->read<Token::TType>(token->type) && m_pBuffer->read<Token::TTag>(token->tag);
  }
  if (!ok) {
    delete token;
    return false;
  }
  pending = token;
  return true;
}

void TokenBuffer::Iterator::next(Token& token) {
  if (!pending) return;
  token = *pending;
  delete pending;
  pending = nullptr;
}

void appendToken(utility::BufferPool& buffer, const Token& token) {
  appendToken(buffer, token.term.data(), static_cast<unsigned int>(token.term.size()), token.startOffset,
              token.endOffset, token.type, token.tag);
}

void appendToken(utility::BufferPool& buffer, const char* bytes, unsigned int length, int start, int end,
                 Token::TType type, Token::TTag tag) {
  buffer.writeString(bytes, static_cast<int>(length));
  buffer.writeUint32(static_cast<unsigned int>(start));
  buffer.writeUint32(static_cast<unsigned int>(end));
  buffer.write<Token::TType>(type);
  buffer.write<Token::TTag>(tag);
}

}  // namespace analyzer
}  // namespace vortm
