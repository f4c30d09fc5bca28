#ifndef VORELIN_FUZZ_FUZZSUPPORT_H
#define VORELIN_FUZZ_FUZZSUPPORT_H

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <streambuf>
#include <string>
#include <vector>

#include "analyzer/CharacterLexer.h"
#include "analyzer/TokenBuffer.h"
#include "common/AutoPtr.h"
#include "common/CreatorRegister.h"
#include "common/InstanceCreator.h"

// Stops the run with the failed condition's text, so that the fuzzer keeps
// the input that broke an invariant.
#define FUZZ_CHECK(cond)                                                     \
  do {                                                                       \
    if (!(cond)) {                                                           \
      std::fprintf(stderr, "check failed: %s (line %d)\n", #cond, __LINE__); \
      std::abort();                                                          \
    }                                                                        \
  } while (0)

namespace vortm {
namespace fuzzing {

// Swallows everything: the library logs to std::cout, which would drown the
// fuzzer's own output.
class NullBuffer : public std::streambuf {
 protected:
  int overflow(int c) override { return c; }
};

// The buffer is never freed: std::cout is flushed at exit, after statics
// are destroyed.
inline void silenceOutput() {
  static NullBuffer* null = new NullBuffer;
  std::cout.rdbuf(null);
}

// A file of this process, removed when the fuzzer exits.
struct TempFile {
  explicit TempFile(const std::string& tag) : path("/tmp/vorelin_fuzz_" + std::to_string(getpid()) + "_" + tag) {}
  ~TempFile() { std::remove(path.c_str()); }
  bool write(const uint8_t* data, size_t size) const {
    FILE* f = std::fopen(path.c_str(), "wb");
    if (!f) return false;
    bool ok = std::fwrite(data, 1, size, f) == size;
    return std::fclose(f) == 0 && ok;
  }
  std::string path;
};

// Each character's byte length at its first byte, cut as Tokenizer::doLexer
// does: after a lexer failure the rest stays one-byte characters.
inline std::vector<unsigned int> forwardRefs(const std::string& lexerId, const char* text, unsigned int length) {
  common::gfn_creatorRegister();
  std::vector<unsigned int> ref(length ? length : 1, 1);
  common::AutoPtr<analyzer::CharacterLexer> lexer(
      common::InstanceCreator<analyzer::CharacterLexer>::getCreation(lexerId), true);
  lexer->setText(text, length);
  unsigned int offset = 0, charLength = 0;
  while (lexer->doLexer(offset, charLength) == 1)
    if (offset < length) ref[offset] = charLength;
  return ref;
}

// A token lies inside the `length` bytes of `text`, whose first byte is at
// offset `base`, ends not before it starts, and its term is the bytes it covers.
inline void checkToken(const analyzer::Token& t, const char* text, size_t length, long base) {
  FUZZ_CHECK(t.startOffset >= base && t.endOffset >= t.startOffset);
  FUZZ_CHECK(t.endOffset < base + static_cast<long>(length));
  FUZZ_CHECK(t.term == std::string(text + (t.startOffset - base), t.endOffset - t.startOffset + 1));
}

// The tokens of a segmentation, each checked as above, which must also tile
// the text: in order, without gap or overlap, up to its end.
inline std::vector<analyzer::Token> checkTiling(analyzer::TokenBuffer& out, const char* text, size_t length,
                                                long base) {
  std::vector<analyzer::Token> tokens;
  common::AutoPtr<analyzer::TokenBuffer::Iterator> it = out.iterator();
  long next = base;
  for (analyzer::Token t; it->hasNext(); next = t.endOffset + 1) {
    it->next(t);
    FUZZ_CHECK(t.startOffset == next);
    checkToken(t, text, length, base);
    tokens.push_back(t);
  }
  FUZZ_CHECK(next == base + static_cast<long>(length));
  return tokens;
}

}  // namespace fuzzing
}  // namespace vortm

#endif
