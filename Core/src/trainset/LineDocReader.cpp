#include "trainset/LineDocReader.h"

namespace vortm {
namespace trainset {

LineDocReader::LineDocReader(const std::string& path) : m_reader(path, true), m_source(path) {}

LineDocReader::~LineDocReader() {}

bool LineDocReader::readNextLine(std::string& line) {
  if (!m_reader.good()) return false;
  return m_reader.readLine(line);
}

bool LineDocReader::hasNextDoc() {
  std::string line;
  if (!readNextLine(line)) return false;
  m_doc = Doc();
  m_doc.content = line;
  m_doc.source = m_source;
  return true;
}

Doc LineDocReader::getNextDoc() { return m_doc; }

void LineDocReader::getNextDoc(Doc& doc) { doc = m_doc; }

LabeledLineDocReader::LabeledLineDocReader(const std::string& path) : LineDocReader(path) {}

bool LabeledLineDocReader::hasNextDoc() {
  std::string line;
  if (!readNextLine(line)) return false;
  m_doc = Doc();
  std::string::size_type mark = line.find("::");
  if (mark == std::string::npos) {
    m_doc.content = line;
  } else {
    m_doc.label = line.substr(0, mark);
    m_doc.content = line.substr(mark + 2);
  }
  return true;
}

}  // namespace trainset
}  // namespace vortm
