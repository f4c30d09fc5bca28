#include "analyzer/TokenFilter.h"

#include <atomic>

namespace vortm {
namespace analyzer {

namespace {
std::atomic<unsigned long> g_chainsEpoch(0);
}  // namespace

void TokenFilter::noteChainsChanged() { g_chainsEpoch.fetch_add(1, std::memory_order_acq_rel); }

unsigned long TokenFilter::chainsEpoch() { return g_chainsEpoch.load(std::memory_order_acquire); }

bool TokenFilter::resetChainState() {
  for (TokenFilter* link = this; link; link = link->m_nextFilterPtr.get())
    if (!link->resetState()) return false;
  return true;
}

bool TokenFilter::filter(Token& token) {
  if (m_nextFilterPtr && m_nextFilterPtr->filter(token)) return true;
  return filterInternal(token);
}

// Walks to the end of the chain without recursion, so that a long chain
// passes no copies of the new filter down the stack.
void TokenFilter::attachFilter(common::AutoPtr<TokenFilter> next) {
  if (!next) return;
  TokenFilter* tail = this;
  while (tail->m_nextFilterPtr) tail = tail->m_nextFilterPtr.get();
  tail->m_nextFilterPtr = next;
  noteChainsChanged();
}

common::AutoPtr<TokenFilter> TokenFilter::cloneIgnoringState() {
  common::AutoPtr<TokenFilter> copy = cloneIgnoringStateInternal();
  if (!copy) return copy;
  // A copy made by copy construction would still point into the original
  // chain; cut that link before hanging the cloned rest on it.
  copy->m_nextFilterPtr = common::AutoPtr<TokenFilter>();
  if (m_nextFilterPtr) copy->m_nextFilterPtr = m_nextFilterPtr->cloneIgnoringState();
  return copy;
}

}  // namespace analyzer
}  // namespace vortm
