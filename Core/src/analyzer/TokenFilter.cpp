#include "analyzer/TokenFilter.h"

namespace vortm {
namespace analyzer {

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
}

common::AutoPtr<TokenFilter> TokenFilter::cloneIgnoringState() {
  common::AutoPtr<TokenFilter> copy = cloneIgnoringStateInternal();
  if (!copy) return copy;
  // A copy made by copy construction would still point into the original
  // chain; cut that link before hanging the cloned rest on it.
  copy->m_nextFilterPtr = common::AutoPtr<TokenFilter>();
  if (m_nextFilterPtr) copy->attachFilter(m_nextFilterPtr->cloneIgnoringState());
  return copy;
}

}  // namespace analyzer
}  // namespace vortm
