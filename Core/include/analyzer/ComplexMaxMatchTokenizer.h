#ifndef VORTM_ANALYZER_COMPLEXMAXMATCHTOKENIZER_H
#define VORTM_ANALYZER_COMPLEXMAXMATCHTOKENIZER_H

#include <string>

#include "analyzer/TrieDictMaxForwardTokenizer.h"
#include "common/InstanceCreator.h"

namespace vortm {
namespace analyzer {

// The dictionary tokenizer with three-word look-ahead: the same chain
// behaviour as TrieDictMaxForwardTokenizer, over a ComplexMatchTrieDict, or
// over an LMBasedMatchTrieDict when a language model is configured.
class ComplexMaxMatchTokenizer : public TrieDictMaxForwardTokenizer {
 public:
  static const std::string PARAM_WORD_VEC_FILE_FOR_LM_TOKENIZER;
  static const std::string PARAM_NET_WEIGHT_FILE_FOR_LM_TOKENIZER;

  ComplexMaxMatchTokenizer();
  virtual ~ComplexMaxMatchTokenizer();

  using TrieDictMaxForwardTokenizer::config;
  // The keys of Tokenizer::config, "dict_file", and optionally the two model
  // files "word_vec_file_for_LM_tokenizer" and
  // "net_weight_file_for_LM_tokenizer", which go together.
  bool config(const configure::Parameter& param) override;
};

VORTM_DECLARE_CREATOR(ComplexMaxMatchTokenizerCreator, Tokenizer, ComplexMaxMatchTokenizer,
                      "complexMaxMatchTokenzier");

}  // namespace analyzer
}  // namespace vortm

#endif
