#include "trainset/XMLFileDocReader.h"

#include <cstdlib>

#include "utility/CharIterator.h"

namespace vortm {
namespace trainset {

using common::AutoPtr;

XMLFileDocReader::XMLFileDocReader(const std::string& path, const XMLDocTags& tags)
    : m_tags(tags), m_next(0), m_inDoc(false) {
  loadFromXMLFile(path);
}

XMLFileDocReader::~XMLFileDocReader() {}

bool XMLFileDocReader::loadFromXMLFile(const std::string& path) {
  m_docs.clear();
  m_next = 0;
  m_inDoc = false;
  m_openTag.clear();
  utility::CharIteratorFile* file = new utility::CharIteratorFile();
  AutoPtr<utility::CharIterator> input(file, true);
  if (!file->setFile(path)) return false;
  utility::BasicXMLParser parser(input);
  parser.addListener(AutoPtr<utility::Listener>(this, false));
  return parser.doParse();
}

bool XMLFileDocReader::hasNextDoc() {
  if (m_next >= m_docs.size()) return false;
  m_doc = m_docs[m_next++];
  return true;
}

Doc XMLFileDocReader::getNextDoc() { return m_doc; }

void XMLFileDocReader::getNextDoc(Doc& doc) { doc = m_doc; }

std::string* XMLFileDocReader::openField() {
  if (!m_inDoc || m_openTag.empty()) return nullptr;
  if (m_openTag == m_tags.title) return &m_building.title;
  if (m_openTag == m_tags.subTitle) return &m_building.subTitle;
  if (m_openTag == m_tags.content) return &m_building.content;
  if (m_openTag == m_tags.label) return &m_building.label;
  if (m_openTag == m_tags.source) return &m_building.source;
  return nullptr;
}

void XMLFileDocReader::onTagBegin(const std::string& tag, utility::HashTable<std::string, std::string>& /*attributes*/) {
  if (!m_tags.doc.empty() && tag == m_tags.doc) {
    m_building = Doc();
    m_inDoc = true;
    m_openTag.clear();
    return;
  }
  m_openTag = tag;
}

void XMLFileDocReader::onTextEnd(const std::string& text) {
  if (m_inDoc && !m_openTag.empty() && m_openTag == m_tags.id) {
    m_building.id = std::strtol(text.c_str(), nullptr, 10);
    return;
  }
  std::string* field = openField();
  if (field != nullptr) *field += text;
}

void XMLFileDocReader::onTagEnd(const std::string& tag) {
  if (m_inDoc && tag == m_tags.doc) {
    m_docs.push_back(m_building);
    m_inDoc = false;
  }
  m_openTag.clear();
}

}  // namespace trainset
}  // namespace vortm
