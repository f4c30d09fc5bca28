#include "analyzer/Tokenizer.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <typeinfo>

#include "analyzer/DictTokenizer.h"
#include "analyzer/GBKCharacterLexer.h"
#include "analyzer/UTF8CharacterLexer.h"
#include "common/CreatorRegister.h"
#include "common/InstanceCreator.h"
#include "common/Logger.h"
#include "utility/GBKCharacterUtility.h"
#include "utility/UTF8CharacterUtility.h"
#include "utility/Utility.h"

namespace vortm {
namespace analyzer {

using common::AutoPtr;
using common::InstanceCreator;
using configure::Parameter;

Tokenizer::~Tokenizer() {
  // Threads may hold copies of this chain's filters under its address, which
  // a later tokenizer may take.
  if (m_tokenFilterPtr) TokenFilter::noteChainsChanged();
}

bool Tokenizer::configEncode(const std::string& encode) {
  common::gfn_creatorRegister();
  m_encode = encode;
  utility::Utility::toLowcase(m_encode);
  if (m_encode == "utf-8" || m_encode == "utf8") {
    m_charUtilityPtr = AutoPtr<utility::CharacterUtility>(new utility::UTF8CharacterUtility(), true);
    m_lexerIdentifier = "basicUTF8Lexer";
  } else if (m_encode == "gbk" || m_encode == "gb2312") {
    m_charUtilityPtr = AutoPtr<utility::CharacterUtility>(new utility::GBKCharacterUtility(), true);
    m_lexerIdentifier = "basicGBKLexer";
  } else {
    common::gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Unsupported Encode " + m_encode);
    return false;
  }
  return true;
}

bool Tokenizer::makeLexer() {
  m_lexerPtr = AutoPtr<CharacterLexer>(InstanceCreator<CharacterLexer>::getCreation(m_lexerIdentifier), true);
  return static_cast<bool>(m_lexerPtr);
}

bool Tokenizer::config(const Parameter& param) {
  std::string encode = m_encode;
  param["encode"].getStringValue(encode);
  if (!configEncode(encode)) return false;

  param["lexer_identifier"].getStringValue(m_lexerIdentifier);
  if (!makeLexer()) return false;

  const Parameter& filters = param["token_filters"];
  for (int i = 0; !filters[i].isNull(); ++i) {
    const Parameter& entry = filters[i];
    std::string identifier;
    if (!entry["identifier"].getStringValue(identifier)) continue;
    AutoPtr<TokenFilter> filter(InstanceCreator<TokenFilter>::getCreation(identifier), true);
    if (!filter || !filter->config(entry["param"])) return false;
    if (!m_tokenFilterPtr)
      m_tokenFilterPtr = filter;
    else
      m_tokenFilterPtr->attachFilter(filter);
  }
  TokenFilter::noteChainsChanged();
  return true;
}

bool Tokenizer::config(std::map<std::string, std::string>& param) {
  m_charUtilityPtr = AutoPtr<utility::CharacterUtility>();
  m_lexerPtr = AutoPtr<CharacterLexer>();
  std::map<std::string, std::string>::const_iterator it = param.find("encode");
  if (it != param.end() && !configEncode(it->second)) return false;
  it = param.find("lexer_identifier");
  if (it != param.end()) m_lexerIdentifier = it->second;
  common::gfn_creatorRegister();
  makeLexer();
  return m_lexerPtr && m_charUtilityPtr;
}

bool Tokenizer::isInDict(const std::string& word) {
  if (!m_postTokenizerPtr) return false;
  return m_postTokenizerPtr->isInDict(word);
}

namespace {
// A lexer is a cursor, so concurrent calls each need their own. Isolated calls
// take theirs from a per-thread set, one per identifier, built once: a call
// is done with its lexer before it hands spans on, so the nested calls of one
// thread can use the same lexer in turn.
CharacterLexer* threadLexer(const std::string& identifier) {
  thread_local std::map<std::string, std::unique_ptr<CharacterLexer> > lexers;
  std::unique_ptr<CharacterLexer>& slot = lexers[identifier];
  if (!slot) {
    common::gfn_creatorRegister();
    slot.reset(InstanceCreator<CharacterLexer>::getCreation(identifier));
  }
  return slot.get();
}


// What one nesting level of doTokenize needs for a call: the buffer that the
// tokenizer writes before its filters see the tokens, and the character
// lengths. A tokenizer is still reading its buffer while the next one works
// on a span, so each level of the chain has its own; they are kept per
// thread and reused, so a text costs no allocation here once they have grown.
struct Scratch {
  TokenBuffer buffer;
  std::vector<unsigned int> refs;
};

class ScratchLease {
 public:
  ScratchLease() : m_levels(levels()) {
    size_t depth = m_levels.depth;
    if (depth == m_levels.items.size()) m_levels.items.emplace_back(new Scratch());
    m_scratch = m_levels.items[depth].get();
    m_scratch->buffer.reset();
    ++m_levels.depth;
  }
  ~ScratchLease() {
    // What one long text grew is not held for the rest of the thread's life.
    if (m_scratch->buffer.getCapacity() > kKeepBytes) m_scratch->buffer.reInit();
    if (m_scratch->refs.capacity() > kKeepBytes / sizeof(unsigned int)) std::vector<unsigned int>().swap(m_scratch->refs);
    --m_levels.depth;
  }
  ScratchLease(const ScratchLease&) = delete;
  ScratchLease& operator=(const ScratchLease&) = delete;

  Scratch& operator*() const { return *m_scratch; }

 private:
  static const unsigned long kKeepBytes = 1UL << 22;
  struct Levels {
    std::vector<std::unique_ptr<Scratch> > items;
    size_t depth = 0;
  };
  static Levels& levels() {
    thread_local Levels all;
    return all;
  }

  Levels& m_levels;
  Scratch* m_scratch;
};

// Isolated calls must not share filter state, yet a new copy of the chain
// for every call, and so for every span handed on, costs allocations and
// locked counts on the shared word lists. Each thread therefore keeps one
// copy per chain and puts it back to its fresh state at the start of each
// call; a chain whose filters cannot say how is copied anew as before. A
// copy is found by its tokenizer and the chain's head, and all copies are
// dropped once any chain has changed or gone, since a later chain may take
// the same addresses.
class FilterLease {
 public:
  FilterLease(const Tokenizer* owner, TokenFilter* source) : m_entry(nullptr) {
    if (!source) return;
    Cache& cache = threadCache();
    const unsigned long epoch = TokenFilter::chainsEpoch();
    if (cache.epoch != epoch) cache.retireAll(epoch);
    for (const std::unique_ptr<Entry>& entry : cache.entries) {
      if (entry->owner == owner && entry->source == source && !entry->busy) {
        m_entry = entry.get();
        break;
      }
    }
    if (m_entry && (!m_entry->copy || !m_entry->copy->resetChainState()))
      m_entry->copy = source->cloneIgnoringState();
    if (!m_entry) {
      cache.entries.emplace_back(new Entry(owner, source, source->cloneIgnoringState()));
      m_entry = cache.entries.back().get();
    }
    m_entry->busy = true;
  }
  ~FilterLease() {
    if (!m_entry) return;
    m_entry->busy = false;
    if (!m_entry->owner) threadCache().drop(m_entry);
  }
  FilterLease(const FilterLease&) = delete;
  FilterLease& operator=(const FilterLease&) = delete;

  TokenFilter* get() const { return m_entry ? m_entry->copy.get() : nullptr; }

 private:
  struct Entry {
    Entry(const Tokenizer* o, const TokenFilter* s, const AutoPtr<TokenFilter>& c) : owner(o), source(s), copy(c) {}
    const Tokenizer* owner;  // null once retired
    const TokenFilter* source;
    AutoPtr<TokenFilter> copy;
    bool busy = false;
  };
  struct Cache {
    std::vector<std::unique_ptr<Entry> > entries;
    unsigned long epoch = 0;

    // Drops every copy; one still in use by an outer call of this thread
    // is only unlinked, and goes when that call is done with it.
    void retireAll(unsigned long now) {
      std::vector<std::unique_ptr<Entry> > kept;
      for (std::unique_ptr<Entry>& entry : entries) {
        if (!entry->busy) continue;
        entry->owner = nullptr;
        entry->source = nullptr;
        kept.push_back(std::move(entry));
      }
      entries.swap(kept);
      epoch = now;
    }
    void drop(Entry* retired) {
      for (size_t i = 0; i < entries.size(); ++i) {
        if (entries[i].get() != retired) continue;
        entries.erase(entries.begin() + static_cast<long>(i));
        return;
      }
    }
  };
  static Cache& threadCache() {
    thread_local Cache cache;
    return cache;
  }

  Entry* m_entry;
};

// The two lexers of the library, run straight over the bytes with their exact
// rules: a character's length at its first byte, 1 elsewhere, and after a
// failure every remaining byte stands alone. Returns false for a lexer of
// another kind, which is then run through its own interface.
bool fillCharLengths(const CharacterLexer& lexer, const unsigned char* text, unsigned int length,
                     unsigned int* refs) {
  // Bytes a character takes by its lead byte, 0 where the lexer fails.
  struct Sizes {
    explicit Sizes(bool utf8) {
      for (unsigned int b = 0; b < 256; ++b) {
        if (b < 0x80)
          of[b] = 1;
        else if (!utf8)
          of[b] = 2;
        else if ((b & 0xC0) == 0x80)
          of[b] = 1;  // a stray continuation byte stands alone
        else if ((b & 0xE0) == 0xC0)
          of[b] = 2;
        else if ((b & 0xF0) == 0xE0)
          of[b] = 3;
        else
          of[b] = 0;  // four-byte and longer leads are not supported
      }
    }
    unsigned char of[256];
  };
  static const Sizes utf8Sizes(true), gbkSizes(false);
  const Sizes* sizes;
  if (typeid(lexer) == typeid(UTF8CharacterLexer))
    sizes = &utf8Sizes;
  else if (typeid(lexer) == typeid(GBKCharacterLexer))
    sizes = &gbkSizes;
  else
    return false;
  unsigned int i = 0;
  while (i < length) {
    const unsigned int size = sizes->of[text[i]];
    // A failing lead, or a character cut short by the end: from here on
    // every byte stands alone.
    if (size == 0 || size > length - i) break;
    refs[i] = size;
    for (unsigned int k = 1; k < size; ++k) refs[i + k] = 1;
    i += size;
  }
  for (; i < length; ++i) refs[i] = 1;
  return true;
}

}  // namespace

bool Tokenizer::doTokenize(const std::string& text, TokenBuffer& out, bool isolated, unsigned int base) {
  return doTokenizeBytes(text.data(), static_cast<unsigned int>(text.size()), out, isolated, base);
}

bool Tokenizer::doTokenizeBytes(const char* text, unsigned int length, TokenBuffer& out, bool isolated,
                                unsigned int base) {
  if (length == 0) return true;

  // The shared members are not copied on the isolated path: their counts are
  // unlocked.
  CharacterLexer* lexer = isolated ? threadLexer(m_lexerIdentifier) : m_lexerPtr.get();
  if (!lexer) return false;

  ScratchLease scratch;
  TokenBuffer& local = (*scratch).buffer;
  if (!doTokenizeWith(text, length, lexer, (*scratch).refs, local, base)) return false;

  FilterLease privateFilters(this, isolated ? m_tokenFilterPtr.get() : nullptr);
  TokenFilter* filters = isolated ? privateFilters.get() : m_tokenFilterPtr.get();

  TokenBuffer::Iterator it(&local);
  Token token;
  while (it.readNext(token)) {
    if (filters && filters->filter(token)) continue;
    if ((token.type == Token::TT_CH_RUN || token.type == Token::TT_TEXT_SPAN) && m_postTokenizerPtr) {
      // Only the text goes on, cut at its first zero byte; the span's start
      // becomes the base of the offsets that the next tokenizer writes.
      const unsigned int spanLength =
          static_cast<unsigned int>(utility::Utility::bytesBeforeZero(token.term.data(), token.term.size()));
      if (!m_postTokenizerPtr->doTokenizeBytes(token.term.data(), spanLength, out, isolated,
                                               static_cast<unsigned int>(token.startOffset)))
        return false;
    } else {
      appendToken(out, token);
    }
  }
  return true;
}

bool Tokenizer::doTokenize(const std::string& text, AutoPtr<CharacterLexer> lexer, TokenBuffer& out,
                           unsigned int base) {
  std::vector<unsigned int> refs;
  return doTokenizeWith(text.data(), static_cast<unsigned int>(text.size()), lexer.get(), refs, out, base);
}

bool Tokenizer::doTokenizeWith(const char* text, unsigned int length, CharacterLexer* lexer,
                               std::vector<unsigned int>& refs, TokenBuffer& out, unsigned int base) {
  if (!lexer || !m_charUtilityPtr) return false;
  if (length == 0) return true;
  if (refs.size() < length) refs.resize(length);
  unsigned int* pForwardRefBuf = refs.data();
  lexCharacters(text, length, *lexer, pForwardRefBuf);
  return doTokenizeInternal(text, pForwardRefBuf, length, out, base);
}

void Tokenizer::lexCharacters(const char* text, unsigned int length, CharacterLexer& lexer,
                              unsigned int* forwardRefBuf) {
  if (!fillCharLengths(lexer, reinterpret_cast<const unsigned char*>(text), length, forwardRefBuf))
    doLexer(text, length, lexer, forwardRefBuf);
}

int Tokenizer::doLexer(const char* text, unsigned int length, CharacterLexer& lexer, unsigned int* forwardRefBuf) {
  lexer.setText(text, length);
  for (unsigned int i = 0; i < length; ++i) forwardRefBuf[i] = 1;
  unsigned int offset = 0, charLength = 0;
  int result;
  while ((result = lexer.doLexer(offset, charLength)) == 1) {
    if (offset < length) forwardRefBuf[offset] = charLength;
  }
  return result;
}

void Tokenizer::attachPostTokenizer(AutoPtr<Tokenizer> next) {
  if (!next) return;
  if (m_postTokenizerPtr) {
    m_postTokenizerPtr->attachPostTokenizer(next);
    return;
  }
  m_postTokenizerPtr = next;
  // Two holders of one object may not be assigned to each other, so a link
  // that is already in place is left alone.
  if (next->m_preTokenizerPtr != this) next->m_preTokenizerPtr = AutoPtr<Tokenizer>(this, false);
}

bool Tokenizer::insertUserWords(const std::vector<std::string>& words, Token::TType type, Token::TTag tag) {
  if (isDictBasedTokenizer()) {
    DictTokenizer* dictTokenizer = static_cast<DictTokenizer*>(this);
    for (size_t i = 0; i < words.size(); ++i)
      if (!dictTokenizer->insertWord(words[i], type, tag)) return false;
    return true;
  }
  if (!m_postTokenizerPtr) return false;
  return m_postTokenizerPtr->insertUserWords(words, type, tag);
}

}  // namespace analyzer
}  // namespace vortm
