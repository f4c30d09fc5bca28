#ifndef VORTM_MODULAR_STANDARDTOKENIZEDDOCITERATOR_H
#define VORTM_MODULAR_STANDARDTOKENIZEDDOCITERATOR_H

#include "common/AutoPtr.h"
#include "modular/TextAnalyzer.h"
#include "trainset/DocReader.h"
#include "trainset/TokenizedDoc.h"

namespace vortm {
namespace modular {

// Drops documents that tokenize to nothing.
class StandardTokenizedDocFilter : public trainset::TokenizedDocFilter {
 public:
  bool filter(trainset::TokenizedDoc& doc) override { return doc.tokens.empty(); }
};

// Reads documents and tokenizes each: title, subtitle (each followed by a
// line feed when present) and content go to the analyzer as one text. A
// document that fails to tokenize is passed over. The label is trimmed and
// split at "/".
class StandardTokenizedDocIterator : public trainset::TokenizedDocIterator {
 public:
  StandardTokenizedDocIterator(common::AutoPtr<trainset::DocReader> reader, common::AutoPtr<TextAnalyzer> analyzer);

  // The text that a document is tokenized from.
  static std::string docText(const trainset::Doc& doc);
  // Tokenizes one document into `out`; false if the analyzer refuses it.
  static bool tokenizeDoc(TextAnalyzer& analyzer, const trainset::Doc& doc, trainset::TokenizedDoc& out);

 protected:
  bool hasNextInternal() override;

  common::AutoPtr<trainset::DocReader> m_readerPtr;
  common::AutoPtr<TextAnalyzer> m_analyzerPtr;
};

}  // namespace modular
}  // namespace vortm

#endif
