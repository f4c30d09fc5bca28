// Arbitrary bytes into the trie dictionary, chosen by the first byte: as a
// saved dictionary of either character width, or as a text matched against a
// fixed dictionary of either encoding.
#include <map>

#include "FuzzSupport.h"
#include "analyzer/TrieDict.h"

using namespace vortm::analyzer;
using namespace vortm::fuzzing;

namespace {

typedef std::map<std::string, unsigned short> Words;

// The tokens must tile the text, and words be words of `words` (if given)
// with their value.
void matchAndCheck(Dict& dict, const std::string& lexerId, const char* text, unsigned int length,
                   const Words* words) {
  std::vector<unsigned int> ref = forwardRefs(lexerId, text, length);
  TokenBuffer out;
  FUZZ_CHECK(dict.match(text, length, ref.data(), out, 7));
  for (const Token& token : checkTiling(out, text, length, 7)) {
    // A span, or a word whose value reads as one.
    if (!words || (token.type == Token::TT_TEXT_SPAN && token.tag == Token::TG_PLAIN)) continue;
    auto w = words->find(token.term);
    FUZZ_CHECK(w != words->end());
    FUZZ_CHECK((w->second >> 8) == token.type && (w->second & 0xFF) == token.tag);
  }
}

template <class CHAR>
void loadCase(const std::string& lexerId, const uint8_t* data, size_t size) {
  static const TempFile file("triedict_load"), resaved("triedict_resave");
  if (!file.write(data, size)) return;
  TrieDict<CHAR> dict(lexerId);
  dict.insert("ab", 0x0102);
  if (!dict.loadFrom(file.path)) {
    FUZZ_CHECK(dict.find("ab") == 0x0102);  // a failed load keeps the old tree
    return;
  }
  // Whatever loaded saves and loads again, and matches sanely.
  FUZZ_CHECK(dict.saveTo(resaved.path));
  TrieDict<CHAR> again(lexerId);
  FUZZ_CHECK(again.loadFrom(resaved.path));
  matchAndCheck(dict, lexerId, reinterpret_cast<const char*>(data), static_cast<unsigned int>(size), nullptr);
}

template <class CHAR>
struct FixedDict {
  FixedDict(const std::string& lexer, const Words& w) : lexerId(lexer), words(w), dict(lexer) {
    for (const auto& entry : words) dict.insert(entry.first, entry.second);
  }
  void match(const uint8_t* data, size_t size) {
    matchAndCheck(dict, lexerId, reinterpret_cast<const char*>(data), static_cast<unsigned int>(size), &words);
  }
  std::string lexerId;
  Words words;
  TrieDict<CHAR> dict;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static bool once = (silenceOutput(), true);
  (void)once;
  // Words of 1 to 4 characters, including ASCII and punctuation, some of
  // them prefixes of others.
  static FixedDict<unsigned int> utf8("basicUTF8Lexer", {{"a", 0x0101}, {"ab", 0x0206}, {"abcd", 0x0207},
                                                         {"中", 0x0208}, {"中文", 0x0209}, {"中文分词", 0x020A},
                                                         {"，", 0x0A00}, {"\xC3\xA9", 0x0E11}});
  static FixedDict<unsigned short> gbk("basicGBKLexer", {{"a", 0x0101}, {"\xC4\xE3", 0x0206},
                                                         {"\xC4\xE3\xBA\xC3", 0x0207}, {"\xA3\xAC", 0x0A00},
                                                         {"x\xC4\xE3", 0x0301}});
  if (size == 0 || size > (1 << 20)) return 0;
  const int mode = data[0] & 3;
  ++data, --size;
  if (mode == 0)
    loadCase<unsigned short>("basicGBKLexer", data, size);
  else if (mode == 1)
    loadCase<unsigned int>("basicUTF8Lexer", data, size);
  else if (mode == 2)
    utf8.match(data, size);
  else
    gbk.match(data, size);
  return 0;
}
