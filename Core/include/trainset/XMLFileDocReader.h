#ifndef VORTM_TRAINSET_XMLFILEDOCREADER_H
#define VORTM_TRAINSET_XMLFILEDOCREADER_H

#include <string>
#include <vector>

#include "trainset/DocReader.h"
#include "utility/BasicXMLParser.h"

namespace vortm {
namespace trainset {

// Tag names of one XML corpus layout. An empty name is never matched.
struct XMLDocTags {
  XMLDocTags()
      : doc("doc"), id("id"), title("title"), subTitle("subtitle"), content("content"), label("label"),
        source("source") {}
  std::string doc;
  std::string id;
  std::string title;
  std::string subTitle;
  std::string content;
  std::string label;
  std::string source;
};

// The documents of one XML file, parsed whole into memory when made.
class XMLFileDocReader : public DocReader, public utility::Listener {
 public:
  explicit XMLFileDocReader(const std::string& path, const XMLDocTags& tags = XMLDocTags());
  ~XMLFileDocReader() override;
  bool loadFromXMLFile(const std::string& path);
  bool hasNextDoc() override;
  Doc getNextDoc() override;
  void getNextDoc(Doc& doc) override;

  using utility::Listener::onTagEnd;
  void onTagBegin(const std::string& tag, utility::HashTable<std::string, std::string>& attributes) override;
  void onTagEnd(const std::string& tag) override;
  void onTextEnd(const std::string& text) override;

 private:
  std::string* openField();

  XMLDocTags m_tags;
  std::vector<Doc> m_docs;
  size_t m_next;
  Doc m_doc;
  Doc m_building;
  bool m_inDoc;
  std::string m_openTag;
};

}  // namespace trainset
}  // namespace vortm

#endif
