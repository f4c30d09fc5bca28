#ifndef VORTM_TRAINSET_LINEDOCREADER_H
#define VORTM_TRAINSET_LINEDOCREADER_H

#include <string>

#include "trainset/DocReader.h"
#include "utility/BufferedFileReader.h"

namespace vortm {
namespace trainset {

// One document per line of a file; lines arrive trimmed, and an empty line
// is a document with empty content.
class LineDocReader : public DocReader {
 public:
  explicit LineDocReader(const std::string& path);
  ~LineDocReader() override;
  bool hasNextDoc() override;
  Doc getNextDoc() override;
  void getNextDoc(Doc& doc) override;

 protected:
  bool readNextLine(std::string& line);

  utility::BufferedFileReader m_reader;
  // Copied into each document; the path of the file read.
  std::string m_source;
  Doc m_doc;
};

// "label::content" per line; a line without "::" has no label.
class LabeledLineDocReader : public LineDocReader {
 public:
  explicit LabeledLineDocReader(const std::string& path);
  bool hasNextDoc() override;
};

}  // namespace trainset
}  // namespace vortm

#endif
