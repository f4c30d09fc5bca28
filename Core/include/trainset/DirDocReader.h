#ifndef VORTM_TRAINSET_DIRDOCREADER_H
#define VORTM_TRAINSET_DIRDOCREADER_H

#include <string>

#include "common/AutoPtr.h"
#include "trainset/DocReader.h"
#include "trainset/XMLFileDocReader.h"
#include "utility/DirectoryIterator.h"

namespace vortm {
namespace trainset {

// The bytes of a file up to its first zero byte; false when it cannot be read.
bool readTextFileFully(const std::string& path, std::string& text);

// One document per file below a directory.
class DirDocReader : public DocReader {
 public:
  DirDocReader(const std::string& root, common::AutoPtr<utility::DirectoryFilter> filter = common::AutoPtr<utility::DirectoryFilter>());
  ~DirDocReader() override;
  bool hasNextDoc() override;
  Doc getNextDoc() override;
  void getNextDoc(Doc& doc) override;

 protected:
  // Path of the next file of the walk, or false at its end.
  bool nextFile(std::string& path);
  // For readers that read each file through another reader: the next
  // document of the current file's reader, moving on file by file.
  bool nextFromInnerReaders();
  virtual common::AutoPtr<DocReader> makeInnerReader(const std::string& /*path*/) {
    return common::AutoPtr<DocReader>();
  }

  utility::LinuxDirectoryIterator m_iterator;
  Doc m_doc;
  common::AutoPtr<DocReader> m_inner;
};

// Each file below a directory read as a file of lines, one document each.
class DirLineDocReader : public DirDocReader {
 public:
  DirLineDocReader(const std::string& root, bool labeled = false,
                   common::AutoPtr<utility::DirectoryFilter> filter = common::AutoPtr<utility::DirectoryFilter>());
  bool hasNextDoc() override { return nextFromInnerReaders(); }

 private:
  common::AutoPtr<DocReader> makeInnerReader(const std::string& path) override;
  bool m_labeled;
};

// Each file below a directory read as an XML corpus file.
class DirXMLFileDocReader : public DirDocReader {
 public:
  DirXMLFileDocReader(const std::string& root, const XMLDocTags& tags = XMLDocTags(),
                      common::AutoPtr<utility::DirectoryFilter> filter = common::AutoPtr<utility::DirectoryFilter>());
  bool hasNextDoc() override { return nextFromInnerReaders(); }

 private:
  common::AutoPtr<DocReader> makeInnerReader(const std::string& path) override;
  XMLDocTags m_tags;
};

}  // namespace trainset
}  // namespace vortm

#endif
