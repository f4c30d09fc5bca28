#ifndef VORTM_ANALYZER_TOKENFILTER_H
#define VORTM_ANALYZER_TOKENFILTER_H

#include "analyzer/Token.h"
#include "common/AutoPtr.h"
#include "configure/Configurable.h"

namespace vortm {
namespace analyzer {

// One link of a tokenizer's filter chain. A filter may rewrite the token it
// sees, and answers true when the token is to be dropped.
class TokenFilter : public configure::Configurable {
 public:
  TokenFilter() {}
  virtual ~TokenFilter() {}

  bool config(const configure::Parameter& param) override = 0;

  // Runs the chain from its end to this filter: the filter appended last sees
  // the token first, and a drop stops the filters nearer the head.
  bool filter(Token& token);
  // Appends at the end of the chain.
  void attachFilter(common::AutoPtr<TokenFilter> next);
  // A copy of the whole chain that shares the loaded word lists but starts
  // from fresh per-text state, for tokenizing on several threads.
  common::AutoPtr<TokenFilter> cloneIgnoringState();

  // This filter alone: may rewrite the token, true to drop it.
  virtual bool filterInternal(Token& token) = 0;
  // A copy of this filter alone, sharing its word lists, with fresh state.
  virtual common::AutoPtr<TokenFilter> cloneIgnoringStateInternal() = 0;
  // Puts this filter back in the state a fresh clone starts in, and says
  // whether it could; a filter that does not know its state answers false
  // and is cloned anew for every text instead.
  virtual bool resetState() { return false; }

  // resetState on every link of the chain; false if any link cannot.
  bool resetChainState();

  // Filter chains that threads may hold private copies of have changed:
  // those copies are stale and are dropped at their next use.
  static void noteChainsChanged();
  static unsigned long chainsEpoch();

  common::AutoPtr<TokenFilter> getNextFilter() const { return m_nextFilterPtr; }

 protected:

  common::AutoPtr<TokenFilter> m_nextFilterPtr;
};

}  // namespace analyzer
}  // namespace vortm

#endif
