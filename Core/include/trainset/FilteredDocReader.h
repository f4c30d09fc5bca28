#ifndef VORTM_TRAINSET_FILTEREDDOCREADER_H
#define VORTM_TRAINSET_FILTEREDDOCREADER_H

#include "common/AutoPtr.h"
#include "trainset/DocReader.h"

namespace vortm {
namespace trainset {

// Decides which documents a FilteredDocReader drops.
class DocFilter {
 public:
  virtual ~DocFilter() {}
  // True means that the document is rejected.
  virtual bool filter(Doc& doc) = 0;
};

// Another reader's documents, without those the filter rejects.
class FilteredDocReader : public DocReader {
 public:
  FilteredDocReader(common::AutoPtr<DocReader> inner, common::AutoPtr<DocFilter> filter);
  bool hasNextDoc() override;
  Doc getNextDoc() override;
  void getNextDoc(Doc& doc) override;

 private:
  common::AutoPtr<DocReader> m_inner;
  common::AutoPtr<DocFilter> m_filter;
  Doc m_doc;
};

}  // namespace trainset
}  // namespace vortm

#endif
