#ifndef VORTM_ANALYZER_BASICWEIBOTOKENIZER_H
#define VORTM_ANALYZER_BASICWEIBOTOKENIZER_H

#include "analyzer/BasicTokenizer.h"
#include "common/InstanceCreator.h"

namespace vortm {
namespace analyzer {

// BasicTokenizer with microblog topics (#...#, TT_TOPIC) and mentions
// (@name, TT_MENTION). The text always ends in one TT_MENTION of whatever
// follows the last open mark, which is empty when no mark is open.
class BasicWeiboTokenizer : public BasicTokenizer {
 public:
  bool doTokenizeInternal(const char* text, unsigned int* pForwardRefBuf, unsigned int length, TokenBuffer& out,
                          unsigned int base) override;
};

VORTM_DECLARE_CREATOR(BasicWeiboTokenizerCreator, Tokenizer, BasicWeiboTokenizer, "basicWeiboTokenzier");

}  // namespace analyzer
}  // namespace vortm

#endif
