// vorelin dict build|lookup: compile word lists into a saved trie dictionary,
// and look words up in one.
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "CommandLine.h"
#include "GbkConverter.h"
#include "TokenNames.h"
#include "WordList.h"
#include "analyzer/TrieDict.h"

namespace vorelin {
namespace cli {

namespace {

const char* kHelp =
    "Usage: vorelin dict build --encoding utf-8|gbk --out FILE [--type T] [--tag G] LIST...\n"
    "       vorelin dict lookup --encoding utf-8|gbk --dict FILE WORD...\n"
    "\n"
    "build   compiles plain-text word lists (UTF-8) into a saved trie dictionary\n"
    "        for the given encoding; for gbk the words are converted to GBK.\n"
    "        A later entry of a word replaces an earlier one, so give general\n"
    "        lists first and specific ones last. --type and --tag set the\n"
    "        starting defaults (CH_WORD and PLAIN). List format: see README.\n"
    "lookup  prints each WORD (UTF-8) with its stored type and tag, or 'absent'.\n";

// Both trie widths behind one face.
class AnyDict {
 public:
  explicit AnyDict(bool gbk) {
    if (gbk)
      m_short.reset(new vortm::analyzer::TrieDict<unsigned short>("basicGBKLexer"));
    else
      m_int.reset(new vortm::analyzer::TrieDict<unsigned int>("basicUTF8Lexer"));
  }
  bool insert(const std::string& w, unsigned short v) { return m_short ? m_short->insert(w, v) : m_int->insert(w, v); }
  unsigned short find(const std::string& w) { return m_short ? m_short->find(w) : m_int->find(w); }
  bool saveTo(const std::string& f) { return m_short ? m_short->saveTo(f) : m_int->saveTo(f); }
  bool loadFrom(const std::string& f) { return m_short ? m_short->loadFrom(f) : m_int->loadFrom(f); }

 private:
  std::unique_ptr<vortm::analyzer::TrieDict<unsigned short> > m_short;
  std::unique_ptr<vortm::analyzer::TrieDict<unsigned int> > m_int;
};

int build(const CommandLine& cl) {
  bool gbk = false;
  if (!parseEncoding(cl.get("encoding"), gbk)) return usageError("dict", "--encoding must be utf-8 or gbk");
  if (cl.get("out").empty()) return usageError("dict", "build needs --out FILE");
  if (cl.positional().size() < 2) return usageError("dict", "build needs at least one LIST");
  int type = 2, tag = 1;
  if (cl.has("type") && !parseType(cl.get("type"), type)) return usageError("dict", "unknown type " + cl.get("type"));
  if (cl.has("tag") && !parseTag(cl.get("tag"), tag)) return usageError("dict", "unknown tag " + cl.get("tag"));

  GbkConverter converter;
  if (gbk && !converter.ok()) {
    std::fprintf(stderr, "vorelin dict: this system cannot convert UTF-8 to GBK\n");
    return kFailure;
  }
  AnyDict dict(gbk);
  size_t words = 0, skipped = 0;
  for (size_t i = 1; i < cl.positional().size(); ++i) {
    std::vector<WordEntry> entries;
    std::string error;
    if (!readWordList(cl.positional()[i], type, tag, entries, error)) {
      std::fprintf(stderr, "vorelin dict: %s\n", error.c_str());
      return kFailure;
    }
    for (const WordEntry& e : entries) {
      std::string word = e.word;
      unsigned short value = static_cast<unsigned short>((e.type << 8) | e.tag);
      // A zero value would store no word at all.
      if (value == 0 || (gbk && !converter.convert(e.word, word)) || !dict.insert(word, value)) {
        ++skipped;
        continue;
      }
      ++words;
    }
  }
  if (!dict.saveTo(cl.get("out"))) {
    std::fprintf(stderr, "vorelin dict: cannot write %s\n", cl.get("out").c_str());
    return kFailure;
  }
  std::fprintf(stderr, "vorelin dict: %zu entries written to %s", words, cl.get("out").c_str());
  if (skipped) std::fprintf(stderr, " (%zu skipped: not representable or invalid)", skipped);
  std::fprintf(stderr, "\n");
  return kOk;
}

int lookup(const CommandLine& cl) {
  bool gbk = false;
  if (!parseEncoding(cl.get("encoding"), gbk)) return usageError("dict", "--encoding must be utf-8 or gbk");
  if (cl.get("dict").empty()) return usageError("dict", "lookup needs --dict FILE");
  if (cl.positional().size() < 2) return usageError("dict", "lookup needs at least one WORD");
  AnyDict dict(gbk);
  if (!dict.loadFrom(cl.get("dict"))) {
    std::fprintf(stderr, "vorelin dict: cannot load %s\n", cl.get("dict").c_str());
    return kFailure;
  }
  GbkConverter converter;
  std::string out;
  for (size_t i = 1; i < cl.positional().size(); ++i) {
    const std::string& word = cl.positional()[i];
    std::string key = word;
    unsigned short value = 0xFFFF;
    if (!gbk || converter.convert(word, key)) value = dict.find(key);
    if (value == 0xFFFF || value == 0) {
      out += word + "\tabsent\n";
    } else {
      out += word + "\t" + typeName(value >> 8) + "\t" + tagName(value & 0xFF) + "\n";
    }
  }
  writeOut(out);
  return kOk;
}

}  // namespace

int runDict(int argc, char** argv) {
  CommandLine cl({"encoding", "out", "dict", "type", "tag"}, {"help", "quiet"});
  if (!cl.parse(argc, argv, 2)) return usageError("dict", cl.error());
  if (cl.has("help") || cl.positional().empty()) {
    std::fputs(kHelp, cl.has("help") ? stdout : stderr);
    return cl.has("help") ? kOk : kUsage;
  }
  redirectLibraryOutput(cl.has("quiet"));
  const std::string& action = cl.positional()[0];
  if (action == "build") return build(cl);
  if (action == "lookup") return lookup(cl);
  return usageError("dict", "unknown action '" + action + "' (build or lookup)");
}

}  // namespace cli
}  // namespace vorelin
