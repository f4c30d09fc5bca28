#include "trainset/DirDocReader.h"

#include <cstdio>
#include <cstring>
#include <vector>

#include "trainset/LineDocReader.h"

namespace vortm {
namespace trainset {

using common::AutoPtr;

bool readTextFileFully(const std::string& path, std::string& text) {
  FILE* file = std::fopen(path.c_str(), "rb");
  if (file == nullptr) return false;
  bool ok = std::fseek(file, 0, SEEK_END) == 0;
  long length = ok ? std::ftell(file) : -1;
  ok = ok && length >= 0 && std::fseek(file, 0, SEEK_SET) == 0;
  std::vector<char> bytes;
  if (ok && length > 0) {
    bytes.resize(static_cast<size_t>(length));
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
  }
  std::fclose(file);
  if (!ok) return false;
  // The text ends at a first zero byte, as a C string would.
  size_t end = 0;
  while (end < bytes.size() && bytes[end] != '\0') ++end;
  text.assign(bytes.data(), end);
  return true;
}

DirDocReader::DirDocReader(const std::string& root, AutoPtr<utility::DirectoryFilter> filter)
    : m_iterator(root, filter) {}

DirDocReader::~DirDocReader() {}

bool DirDocReader::nextFile(std::string& path) {
  while (m_iterator.hasNextNonDirFileInternal()) {
    if (m_iterator.m_filter && m_iterator.m_filter->filter(m_iterator.m_curDir, m_iterator.m_fileName)) continue;
    path = m_iterator.m_curDir + m_iterator.m_fileName;
    return true;
  }
  return false;
}

bool DirDocReader::hasNextDoc() {
  std::string path;
  while (nextFile(path)) {
    std::string text;
    if (!readTextFileFully(path, text)) continue;
    m_doc = Doc();
    m_doc.content = text;
    m_doc.source = path;
    return true;
  }
  return false;
}

bool DirDocReader::nextFromInnerReaders() {
  for (;;) {
    if (m_inner && m_inner->hasNextDoc()) {
      m_inner->getNextDoc(m_doc);
      return true;
    }
    std::string path;
    if (!nextFile(path)) return false;
    m_inner = makeInnerReader(path);
  }
}

Doc DirDocReader::getNextDoc() { return m_doc; }

void DirDocReader::getNextDoc(Doc& doc) { doc = m_doc; }

DirLineDocReader::DirLineDocReader(const std::string& root, bool labeled, AutoPtr<utility::DirectoryFilter> filter)
    : DirDocReader(root, filter), m_labeled(labeled) {}

AutoPtr<DocReader> DirLineDocReader::makeInnerReader(const std::string& path) {
  return m_labeled ? AutoPtr<DocReader>(new LabeledLineDocReader(path), true)
                   : AutoPtr<DocReader>(new LineDocReader(path), true);
}

DirXMLFileDocReader::DirXMLFileDocReader(const std::string& root, const XMLDocTags& tags,
                                         AutoPtr<utility::DirectoryFilter> filter)
    : DirDocReader(root, filter), m_tags(tags) {}

AutoPtr<DocReader> DirXMLFileDocReader::makeInnerReader(const std::string& path) {
  return AutoPtr<DocReader>(new XMLFileDocReader(path, m_tags), true);
}

}  // namespace trainset
}  // namespace vortm
