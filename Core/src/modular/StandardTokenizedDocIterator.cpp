#include "modular/StandardTokenizedDocIterator.h"

#include "utility/Utility.h"

namespace vortm {
namespace modular {

using trainset::Doc;
using trainset::TokenizedDoc;

StandardTokenizedDocIterator::StandardTokenizedDocIterator(common::AutoPtr<trainset::DocReader> reader,
                                                           common::AutoPtr<TextAnalyzer> analyzer)
    : m_readerPtr(reader), m_analyzerPtr(analyzer) {}

std::string StandardTokenizedDocIterator::docText(const Doc& doc) {
  std::string text;
  if (!doc.title.empty()) text += doc.title + "\n";
  if (!doc.subTitle.empty()) text += doc.subTitle + "\n";
  text += doc.content;
  return text;
}

bool StandardTokenizedDocIterator::tokenizeDoc(TextAnalyzer& analyzer, const Doc& doc, TokenizedDoc& out) {
  if (!analyzer.tokenizeText(docText(doc), out.tokens, true)) return false;
  std::string label = doc.label;
  utility::Utility::trim(label);
  out.label = trainset::Label(label, "/");
  out.source = doc.source;
  return true;
}

bool StandardTokenizedDocIterator::hasNextInternal() {
  if (!m_readerPtr || !m_analyzerPtr) return false;
  while (m_readerPtr.get()->hasNextDoc()) {
    Doc doc;
    m_readerPtr.get()->getNextDoc(doc);
    if (tokenizeDoc(*m_analyzerPtr.get(), doc, m_current)) return true;
  }
  return false;
}

}  // namespace modular
}  // namespace vortm
