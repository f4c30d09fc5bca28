#include "analyzer/TokenFilter.h"

namespace vortm {
namespace analyzer {

bool TokenFilter::filter(Token& token) {
  if (m_nextFilterPtr && m_nextFilterPtr->filter(token)) return true;
  return filterInternal(token);
}

void TokenFilter::attachFilter(common::AutoPtr<TokenFilter> next) {
  if (!next) return;
  if (!m_nextFilterPtr) {
    m_nextFilterPtr = next;
    return;
  }
  m_nextFilterPtr->attachFilter(next);
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
