#include "analyzer/ComplexMaxMatchTokenizer.h"

#include "analyzer/ComplexMatchTrieDict.h"
#include "analyzer/LMBasedMatchTrieDict.h"
#include "common/CreatorRegister.h"
#include "common/Logger.h"

namespace vortm {
namespace analyzer {

using common::AutoPtr;

const std::string ComplexMaxMatchTokenizer::PARAM_WORD_VEC_FILE_FOR_LM_TOKENIZER = "word_vec_file_for_LM_tokenizer";
const std::string ComplexMaxMatchTokenizer::PARAM_NET_WEIGHT_FILE_FOR_LM_TOKENIZER =
    "net_weight_file_for_LM_tokenizer";

namespace {

// The dictionary of one character width; null if the model does not load.
template <class CHAR>
Dict* makeDict(const std::string& lexerIdentifier, bool withModel, const std::string& wordVecFile,
               const std::string& netWeightFile) {
  if (!withModel) return new ComplexMatchTrieDict<CHAR>(lexerIdentifier);
  LMBasedMatchTrieDict<CHAR>* dict = new LMBasedMatchTrieDict<CHAR>(lexerIdentifier);
  if (!dict->init(wordVecFile, netWeightFile)) {
    delete dict;
    return nullptr;
  }
  return dict;
}

}  // namespace

ComplexMaxMatchTokenizer::ComplexMaxMatchTokenizer() : TrieDictMaxForwardTokenizer(AutoPtr<Dict>()) {}

ComplexMaxMatchTokenizer::~ComplexMaxMatchTokenizer() {}

bool ComplexMaxMatchTokenizer::config(const configure::Parameter& param) {
  common::gfn_creatorRegister();
  if (!Tokenizer::config(param)) return false;

  std::string dictFile;
  if (!param[PARAM_DICT_FILE].getStringValue(dictFile)) return false;

  std::string wordVecFile, netWeightFile;
  bool withModel = param[PARAM_WORD_VEC_FILE_FOR_LM_TOKENIZER].getStringValue(wordVecFile);
  if (withModel && !param[PARAM_NET_WEIGHT_FILE_FOR_LM_TOKENIZER].getStringValue(netWeightFile)) return false;

  // As for the plain tokenizer, the character width follows the encoding.
  Dict* dict = nullptr;
  if (m_encode == "utf-8" || m_encode == "utf8")
    dict = makeDict<unsigned int>(m_lexerIdentifier, withModel, wordVecFile, netWeightFile);
  else if (m_encode == "gbk" || m_encode == "gb2312")
    dict = makeDict<unsigned short>(m_lexerIdentifier, withModel, wordVecFile, netWeightFile);
  if (!dict) return false;
  m_dictPtr = AutoPtr<Dict>(dict, true);

  if (!m_dictPtr->loadFrom(dictFile)) {
    common::gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Unable to Load TRIE Dict from File " + dictFile);
    m_dictPtr = AutoPtr<Dict>();
    return false;
  }
  return true;
}

}  // namespace analyzer
}  // namespace vortm
