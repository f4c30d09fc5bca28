// Arbitrary bytes as the two language-model files of the segmenter: the
// input is cut at its first 0x00 byte into the word-vector file and the
// output-layer file. Whatever loads must then segment a fixed text sanely.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "analyzer/CharacterLexer.h"
#include "analyzer/LMBasedMatchTrieDict.h"
#include "analyzer/TokenBuffer.h"
#include "common/AutoPtr.h"
#include "common/CreatorRegister.h"
#include "common/InstanceCreator.h"

using namespace vortm::analyzer;
using vortm::common::AutoPtr;
using vortm::common::InstanceCreator;

namespace {

#define FUZZ_CHECK(cond)                                                     \
  do {                                                                       \
    if (!(cond)) {                                                           \
      std::fprintf(stderr, "check failed: %s (line %d)\n", #cond, __LINE__); \
      std::abort();                                                          \
    }                                                                        \
  } while (0)

typedef LMBasedMatchTrieDict<unsigned int> Model;

std::string tempPath(const char* tag) {
  return "/tmp/vorelin_lmmodel_fuzz_" + std::to_string(getpid()) + "_" + tag;
}

void removeFiles() {
  std::remove(tempPath("vec").c_str());
  std::remove(tempPath("net").c_str());
}

bool writeBytes(const std::string& path, const uint8_t* data, size_t size) {
  FILE* f = std::fopen(path.c_str(), "wb");
  if (!f) return false;
  bool ok = std::fwrite(data, 1, size, f) == size;
  return std::fclose(f) == 0 && ok;
}

// Words that make several chunks tie on length, so that the model is asked;
// the seeds name the same words.
const char* const kWords[] = {"研究", "研究生", "生命", "起源", "命", "a", "ab", "bc", "c", "de"};
const std::string kText = "他研究生命起源abcde研究生c";

struct Fixed {
  Fixed() {
    vortm::common::gfn_creatorRegister();
    ref.assign(kText.size(), 1);
    AutoPtr<CharacterLexer> lexer(InstanceCreator<CharacterLexer>::getCreation("basicUTF8Lexer"), true);
    lexer->setText(kText);
    unsigned int offset, length;
    while (lexer->doLexer(offset, length) == 1) ref[offset] = length;
  }
  std::vector<unsigned int> ref;
};

// The tokens tile the text in order and each term is the bytes it covers.
void matchAndCheck(Model& model, std::vector<unsigned int>& ref) {
  TokenBuffer out;
  const unsigned int base = 5;
  FUZZ_CHECK(model.match(kText.data(), static_cast<unsigned int>(kText.size()), ref.data(), out, base));
  AutoPtr<TokenBuffer::Iterator> it = out.iterator();
  Token token;
  long next = base;
  while (it->hasNext()) {
    it->next(token);
    FUZZ_CHECK(token.startOffset == next);
    FUZZ_CHECK(token.endOffset >= token.startOffset);
    size_t start = static_cast<size_t>(token.startOffset - base);
    FUZZ_CHECK(token.term == kText.substr(start, token.endOffset - token.startOffset + 1));
    next = token.endOffset + 1;
  }
  FUZZ_CHECK(next == static_cast<long>(base + kText.size()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static bool once = (vortm::fuzzing::silenceOutput(), true);
  (void)once;
  static Fixed fixed;
  static const std::string vecFile = tempPath("vec");
  static const std::string netFile = tempPath("net");
  static bool cleanup = (std::atexit(removeFiles), true);
  (void)cleanup;
  if (size > (64 << 10)) return 0;

  const uint8_t* cut = static_cast<const uint8_t*>(std::memchr(data, 0, size));
  size_t first = cut ? static_cast<size_t>(cut - data) : size;
  size_t secondStart = cut ? first + 1 : size;
  if (!writeBytes(vecFile, data, first) || !writeBytes(netFile, data + secondStart, size - secondStart)) return 0;

  Model model("basicUTF8Lexer");
  for (const char* w : kWords) model.insert(w, 0x0206);

  // The loader alone: a failure leaves its outputs empty.
  int dimension = 0;
  std::vector<std::vector<double> > rows;
  std::map<std::string, unsigned int> ids;
  if (model.loadWordvec(vecFile, dimension, rows, ids)) {
    FUZZ_CHECK(dimension > 1);
    FUZZ_CHECK(ids.size() <= rows.size());
    for (const auto& row : rows) FUZZ_CHECK(row.size() == static_cast<size_t>(dimension));
    for (const auto& entry : ids) FUZZ_CHECK(entry.second < rows.size());
  } else {
    FUZZ_CHECK(rows.empty() && ids.empty());
  }

  if (model.init(vecFile, netFile)) {
    FUZZ_CHECK(model.getDimension() > 1);
    matchAndCheck(model, fixed.ref);
  } else {
    FUZZ_CHECK(model.getWordCount() == 0);
  }
  return 0;
}
