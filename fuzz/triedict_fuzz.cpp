// Arbitrary bytes into the trie dictionary, chosen by the first byte: as a
// saved dictionary of either character width, or as a text matched against a
// fixed dictionary of either encoding.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "analyzer/CharacterLexer.h"
#include "analyzer/TokenBuffer.h"
#include "analyzer/TrieDict.h"
#include "common/AutoPtr.h"
#include "common/InstanceCreator.h"

using namespace vortm::analyzer;
using vortm::common::AutoPtr;
using vortm::common::InstanceCreator;

namespace {

#define FUZZ_CHECK(cond)                                          \
  do {                                                            \
    if (!(cond)) {                                                \
      std::fprintf(stderr, "check failed: %s (line %d)\n", #cond, __LINE__); \
      std::abort();                                               \
    }                                                             \
  } while (0)

// The files of this process, removed when the fuzzer exits.
struct TempFile {
  explicit TempFile(const char* tag) : path("/tmp/vorelin_triedict_fuzz_" + std::to_string(getpid()) + "_" + tag) {}
  ~TempFile() { std::remove(path.c_str()); }
  std::string path;
};

bool writeBytes(const std::string& path, const uint8_t* data, size_t size) {
  FILE* f = std::fopen(path.c_str(), "wb");
  if (!f) return false;
  bool ok = std::fwrite(data, 1, size, f) == size;
  return std::fclose(f) == 0 && ok;
}

// Cuts the text as Tokenizer::doLexer does: a lexer failure leaves the rest
// as one-byte characters.
std::vector<unsigned int> forwardRefs(const std::string& lexerId, const char* text, unsigned int length) {
  std::vector<unsigned int> ref(length ? length : 1, 1);
  AutoPtr<CharacterLexer> lexer(InstanceCreator<CharacterLexer>::getCreation(lexerId), true);
  lexer->setText(text, length);
  unsigned int offset = 0, charLength = 0;
  while (lexer->doLexer(offset, charLength) == 1)
    if (offset < length) ref[offset] = charLength;
  return ref;
}

// The tokens must tile the text in order, each term being the bytes it
// covers; words must be words of `words` (if given) with their value.
void matchAndCheck(Dict& dict, const std::string& lexerId, const char* text, unsigned int length,
                   const std::map<std::string, unsigned short>* words) {
  std::vector<unsigned int> ref = forwardRefs(lexerId, text, length);
  TokenBuffer out;
  const unsigned int base = 7;
  FUZZ_CHECK(dict.match(text, length, ref.data(), out, base));
  AutoPtr<TokenBuffer::Iterator> it = out.iterator();
  Token token;
  long next = base;
  while (it->hasNext()) {
    it->next(token);
    FUZZ_CHECK(token.startOffset == next);
    FUZZ_CHECK(token.endOffset >= token.startOffset);
    FUZZ_CHECK(token.endOffset < static_cast<long>(base + length));
    size_t start = static_cast<size_t>(token.startOffset - base);
    FUZZ_CHECK(token.term == std::string(text + start, token.endOffset - token.startOffset + 1));
    if (token.type == Token::TT_TEXT_SPAN && token.tag == Token::TG_PLAIN) {
      // a span, or a word whose value looks like one
    } else if (words) {
      auto w = words->find(token.term);
      FUZZ_CHECK(w != words->end());
      FUZZ_CHECK((w->second >> 8) == token.type && (w->second & 0xFF) == token.tag);
    }
    next = token.endOffset + 1;
  }
  FUZZ_CHECK(next == static_cast<long>(base + length));
}

template <class CHAR>
void loadCase(const std::string& lexerId, const uint8_t* data, size_t size) {
  static const TempFile loadFile("load");
  static const TempFile resaveFile("resave");
  const std::string& file = loadFile.path;
  const std::string& resaved = resaveFile.path;
  if (!writeBytes(file, data, size)) return;
  TrieDict<CHAR> dict(lexerId);
  dict.insert("ab", 0x0102);
  if (!dict.loadFrom(file)) {
    // A failed load leaves the old tree in place.
    FUZZ_CHECK(dict.find("ab") == 0x0102);
    return;
  }
  // Whatever loaded saves and loads again, and matches sanely.
  FUZZ_CHECK(dict.saveTo(resaved));
  TrieDict<CHAR> again(lexerId);
  FUZZ_CHECK(again.loadFrom(resaved));
  matchAndCheck(dict, lexerId, reinterpret_cast<const char*>(data), static_cast<unsigned int>(size), nullptr);
}

template <class CHAR>
struct FixedDict {
  FixedDict(const std::string& lexerId, const std::map<std::string, unsigned short>& w)
      : words(w), dict(lexerId) {
    for (const auto& entry : words) dict.insert(entry.first, entry.second);
  }
  std::map<std::string, unsigned short> words;
  TrieDict<CHAR> dict;
};

void matchCase(bool gbk, const uint8_t* data, size_t size) {
  // Words of 1 to 4 characters, including ASCII and punctuation, some of
  // them prefixes of others.
  static FixedDict<unsigned int> utf8("basicUTF8Lexer", {{"a", 0x0101}, {"ab", 0x0206}, {"abcd", 0x0207}, {"中", 0x0208},
                                           {"中文", 0x0209}, {"中文分词", 0x020A}, {"，", 0x0A00}, {"\xC3\xA9", 0x0E11}});
  static FixedDict<unsigned short> gbkDict("basicGBKLexer", {{"a", 0x0101}, {"\xC4\xE3", 0x0206}, {"\xC4\xE3\xBA\xC3", 0x0207},
                                             {"\xA3\xAC", 0x0A00}, {"x\xC4\xE3", 0x0301}});
  const char* text = reinterpret_cast<const char*>(data);
  unsigned int length = static_cast<unsigned int>(size);
  if (gbk)
    matchAndCheck(gbkDict.dict, "basicGBKLexer", text, length, &gbkDict.words);
  else
    matchAndCheck(utf8.dict, "basicUTF8Lexer", text, length, &utf8.words);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static bool once = (vortm::fuzzing::silenceOutput(), true);
  (void)once;
  if (size == 0 || size > (1 << 20)) return 0;
  const uint8_t mode = data[0] & 3;
  ++data;
  --size;
  switch (mode) {
    case 0:
      loadCase<unsigned short>("basicGBKLexer", data, size);
      break;
    case 1:
      loadCase<unsigned int>("basicUTF8Lexer", data, size);
      break;
    default:
      matchCase(mode == 3, data, size);
      break;
  }
  return 0;
}
