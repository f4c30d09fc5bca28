// The two Analyzer operations that put a dictionary tokenizer of user words
// in front of the chain and take it off again. They live apart from the rest
// of the analyzer because they rest on the trie dictionary tokenizer.
#include "analyzer/Analyzer.h"

#include <cstring>

#include "analyzer/TrieDict.h"
#include "analyzer/TrieDictMaxForwardTokenizer.h"
#include "common/Assert.h"
#include "common/CreatorRegister.h"

namespace vortm {
namespace analyzer {

using common::AutoPtr;

const char* Analyzer::userWordLexer() const {
  // The encoding is compared as written, without lower-casing.
  if (m_encode == "utf-8" || m_encode == "UTF-8" || m_encode == "utf8" || m_encode == "UTF8") return "basicUTF8Lexer";
  if (m_encode == "gbk" || m_encode == "gb2312" || m_encode == "GBK" || m_encode == "GB2312") return "basicGBKLexer";
  return nullptr;
}

AutoPtr<Dict> Analyzer::makeUserWordDict(const std::vector<std::string>& words, Token::TType type,
                                         Token::TTag tag) const {
  common::gfn_creatorRegister();
  // Unlike insertWord's (type << 8) | tag, user words keep a zero high byte:
  // their tokens come out as TT_UNSET with the OR of both as the tag, which is
  // what the target-aware scorers look for.
  unsigned short value =
      static_cast<unsigned short>((static_cast<unsigned int>(type) | static_cast<unsigned int>(tag)) & 0xFF);

  AutoPtr<Dict> dict;
  const char* lexer = userWordLexer();
  if (!lexer) return dict;
  // Wide enough for a character of the encoding: three bytes of UTF-8, two of GBK.
  if (std::strcmp(lexer, "basicUTF8Lexer") == 0)
    dict = AutoPtr<Dict>(new TrieDict<unsigned int>(lexer), true);
  else
    dict = AutoPtr<Dict>(new TrieDict<unsigned short>(lexer), true);

  for (size_t i = 0; i < words.size(); ++i) dict->insert(words[i], value);
  return dict;
}

bool Analyzer::attachUserWords(const std::vector<std::string>& words, Token::TType type, Token::TTag tag) {
  AutoPtr<Dict> dict = makeUserWordDict(words, type, tag);
  if (!dict) return false;

  AutoPtr<Tokenizer> tokenizer(new TrieDictMaxForwardTokenizer(dict), true);
  std::map<std::string, std::string> param;
  param["encode"] = m_encode;
  if (!tokenizer->config(param)) return false;

  if (m_tokenizerPtr) tokenizer->attachPostTokenizer(m_tokenizerPtr);
  m_tokenizerPtr = tokenizer;
  return true;
}

void Analyzer::detachPreTokenizer() {
  VOR_ASSERT(m_tokenizerPtr);
  AutoPtr<Tokenizer> postTokenizerPtr = m_tokenizerPtr->m_postTokenizerPtr;
  VOR_ASSERT(postTokenizerPtr);
  postTokenizerPtr->m_preTokenizerPtr = AutoPtr<Tokenizer>();
  // Releasing the old head frees it, since the chain held it only here.
  m_tokenizerPtr = postTokenizerPtr;
}

}  // namespace analyzer
}  // namespace vortm
