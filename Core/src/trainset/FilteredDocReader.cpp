#include "trainset/FilteredDocReader.h"

namespace vortm {
namespace trainset {

using common::AutoPtr;

FilteredDocReader::FilteredDocReader(AutoPtr<DocReader> inner, AutoPtr<DocFilter> filter)
    : m_inner(inner), m_filter(filter) {}

bool FilteredDocReader::hasNextDoc() {
  if (!m_inner) return false;
  for (;;) {
    if (!m_inner->hasNextDoc()) return false;
    m_inner->getNextDoc(m_doc);
    if (!m_filter || !m_filter->filter(m_doc)) return true;
  }
}

Doc FilteredDocReader::getNextDoc() { return m_doc; }

void FilteredDocReader::getNextDoc(Doc& doc) { doc = m_doc; }

}  // namespace trainset
}  // namespace vortm
