#ifndef VORTM_UTILITY_BASICXMLPARSER_H
#define VORTM_UTILITY_BASICXMLPARSER_H

#include <string>
#include <vector>

#include "common/AutoPtr.h"
#include "utility/CharIterator.h"
#include "utility/HashTable.h"

namespace vortm {
namespace utility {

// Receiver of the events of BasicXMLParser.
class Listener {
 public:
  // Listeners may be handed over in owning pointers, so deletion goes
  // through the base.
  virtual ~Listener() {}
  virtual void onTagBegin(const std::string& tag, HashTable<std::string, std::string>& attributes) = 0;
  virtual void onTagEnd(const std::string& tag) = 0;
  virtual void onTextEnd(const std::string& text) = 0;
  // Setting `stop` makes the parser return after this closing tag, so that a
  // caller can pull one record at a time.
  virtual void onTagEnd(const std::string& tag, bool& stop) {
    stop = false;
    onTagEnd(tag);
  }
};

// A small streaming XML reader: elements, attributes, comments and the XML
// declaration. No entities, no CDATA; the bytes pass through untouched.
class BasicXMLParser {
 public:
  BasicXMLParser();
  explicit BasicXMLParser(common::AutoPtr<CharIterator> input);
  virtual ~BasicXMLParser();

  void setCharIterator(common::AutoPtr<CharIterator> input);
  void addListener(common::AutoPtr<Listener> listener);

  // Runs doParseStepByStep until the input is done; the done flag.
  bool doParse();
  // Parses until a listener stops, the input ends or an error occurs; a
  // later call resumes where the input stands.
  bool doParseStepByStep();

  void notifyTagBegin(const std::string& tag, HashTable<std::string, std::string>& attributes);
  void notifyTextEnd(const std::string& text);
  void notifyTagEnd(const std::string& tag);
  void notifyTagEnd(const std::string& tag, bool& stop);

  // Reads the attributes of an opening tag up to and including its ">".
  bool attValueParse(HashTable<std::string, std::string>& attributes, bool& selfClosed);

  const std::string& getVersion() const { return m_version; }
  const std::string& getEncoding() const { return m_encoding; }
  bool isDone() const { return m_bDone; }

 private:
  common::AutoPtr<CharIterator> m_charIteratorPtr;
  std::vector<common::AutoPtr<Listener> > m_listeners;
  std::string m_version;
  std::string m_encoding;
  bool m_bDone;
};

}  // namespace utility
}  // namespace vortm

#endif
