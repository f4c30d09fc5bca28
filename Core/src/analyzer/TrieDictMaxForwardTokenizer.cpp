#include "analyzer/TrieDictMaxForwardTokenizer.h"

#include "analyzer/TrieDict.h"
#include "common/CreatorRegister.h"
#include "common/Logger.h"

namespace vortm {
namespace analyzer {

using common::AutoPtr;

const std::string TrieDictMaxForwardTokenizer::PARAM_DICT_FILE = "dict_file";

TrieDictMaxForwardTokenizer::TrieDictMaxForwardTokenizer() {}

TrieDictMaxForwardTokenizer::TrieDictMaxForwardTokenizer(AutoPtr<Dict> dictPtr) : m_dictPtr(dictPtr) {}

TrieDictMaxForwardTokenizer::~TrieDictMaxForwardTokenizer() {}

bool TrieDictMaxForwardTokenizer::config(const configure::Parameter& param) {
  common::gfn_creatorRegister();
  if (!Tokenizer::config(param)) return false;

  std::string file;
  if (!param[PARAM_DICT_FILE].getStringValue(file)) return false;

  // The width of a trie character follows the encoding alone; m_encode is
  // already lower-cased and known to be one of these.
  if (m_encode == "utf-8" || m_encode == "utf8")
    m_dictPtr = AutoPtr<Dict>(new TrieDict<unsigned int>(m_lexerIdentifier), true);
  else if (m_encode == "gbk" || m_encode == "gb2312")
    m_dictPtr = AutoPtr<Dict>(new TrieDict<unsigned short>(m_lexerIdentifier), true);
  else
    return false;

  if (!m_dictPtr->loadFrom(file)) {
    common::gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Unable to Load TRIE Dict from File " + file);
    m_dictPtr = AutoPtr<Dict>();
    return false;
  }
  return true;
}

bool TrieDictMaxForwardTokenizer::isInDict(const std::string& word) {
  if (m_dictPtr && m_dictPtr->contain(word)) return true;
  return Tokenizer::isInDict(word);
}

bool TrieDictMaxForwardTokenizer::doTokenizeInternal(const char* text, unsigned int* pForwardRefBuf,
                                                     unsigned int length, TokenBuffer& out, unsigned int base) {
  if (!m_dictPtr || length == 0) return false;
  return m_dictPtr->match(text, length, pForwardRefBuf, out, base);
}

bool TrieDictMaxForwardTokenizer::insertWord(const std::string& word, Token::TType type, Token::TTag tag) {
  if (!m_dictPtr) return false;
  unsigned short value =
      static_cast<unsigned short>((static_cast<unsigned int>(type) << 8) | static_cast<unsigned int>(tag));
  return m_dictPtr->insert(word, value);
}

}  // namespace analyzer
}  // namespace vortm
