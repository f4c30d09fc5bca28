#include "analyzer/Tokenizer.h"

#include <map>
#include <memory>

#include "analyzer/DictTokenizer.h"
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
}  // namespace

bool Tokenizer::doTokenize(const std::string& text, TokenBuffer& out, bool isolated, unsigned int base) {
  if (text.empty()) return true;

  // The shared members are not copied on the isolated path: their counts are
  // unlocked.
  CharacterLexer* lexer = isolated ? threadLexer(m_lexerIdentifier) : m_lexerPtr.get();
  if (!lexer) return false;

  TokenBuffer local;
  if (!doTokenizeWith(text, lexer, local, base)) return false;

  AutoPtr<TokenFilter> privateFilters;
  if (isolated && m_tokenFilterPtr) privateFilters = m_tokenFilterPtr->cloneIgnoringState();
  TokenFilter* filters = isolated ? privateFilters.get() : m_tokenFilterPtr.get();

  AutoPtr<TokenBuffer::Iterator> it = local.iterator();
  Token token;
  while (it->hasNext()) {
    it->next(token);
    if (filters && filters->filter(token)) continue;
    if ((token.type == Token::TT_CH_RUN || token.type == Token::TT_TEXT_SPAN) && m_postTokenizerPtr) {
      // Only the text goes on; the span's start becomes the base of the
      // offsets that the next tokenizer writes.
      std::string span(token.term.c_str());
      if (!m_postTokenizerPtr->doTokenize(span, out, isolated, static_cast<unsigned int>(token.startOffset)))
        return false;
    } else {
      appendToken(out, token);
    }
  }
  return true;
}

bool Tokenizer::doTokenize(const std::string& text, AutoPtr<CharacterLexer> lexer, TokenBuffer& out,
                           unsigned int base) {
  return doTokenizeWith(text, lexer.get(), out, base);
}

bool Tokenizer::doTokenizeWith(const std::string& text, CharacterLexer* lexer, TokenBuffer& out, unsigned int base) {
  if (!lexer || !m_charUtilityPtr) return false;
  if (text.empty()) return true;
  unsigned int length = static_cast<unsigned int>(text.size());
  unsigned int* pForwardRefBuf = new unsigned int[length];
  doLexer(text.data(), length, *lexer, pForwardRefBuf);
  bool ok = doTokenizeInternal(text.data(), pForwardRefBuf, length, out, base);
  delete[] pForwardRefBuf;
  return ok;
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
