#include "trainset/TokenizedDoc.h"

namespace vortm {
namespace trainset {

bool TokenizedDocIterator::hasNext() {
  while (hasNextInternal()) {
    if (!m_filterPtr || !m_filterPtr.get()->filter(m_current)) return true;
  }
  return false;
}

}  // namespace trainset
}  // namespace vortm
