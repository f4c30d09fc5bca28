#ifndef VORTM_CONFIGURE_BASICPARAMPARSER_H
#define VORTM_CONFIGURE_BASICPARAMPARSER_H

#include <list>
#include <string>

#include "common/AutoPtr.h"
#include "configure/Parameter.h"
#include "utility/BasicXMLParser.h"
#include "utility/CharIterator.h"
#include "utility/HashTable.h"

namespace vortm {
namespace configure {

// Builds a Parameter tree from configuration XML. The top-level elements of
// the input become children of an implicit root, which is what the caller
// gets back.
//
// Read from a file, a relative path in a value that names files (a key
// containing "_file", or an item of a list whose key ends in "_files") is
// taken relative to the configuration file's folder, so that a model folder
// can be moved or installed anywhere as a whole. Absolute paths, and all
// values read by doParseFromText, stay as written.
class BasicParamParser : public utility::Listener {
 public:
  BasicParamParser();
  virtual ~BasicParamParser();

  bool doParse(const std::string& fileName, common::AutoPtr<Parameter>& root);
  bool doParseFromText(const std::string& text, common::AutoPtr<Parameter>& root);

  using utility::Listener::onTagEnd;
  void onTagBegin(const std::string& tag, utility::HashTable<std::string, std::string>& attributes) override;
  void onTagEnd(const std::string& tag) override;
  void onTextEnd(const std::string& text) override;

  // Why the last parse failed; empty after a success.
  const std::string& getErrorText() const { return m_errorText; }

 private:
  bool parse(common::AutoPtr<utility::CharIterator> input, common::AutoPtr<Parameter>& root);
  // True when the element now open holds a file path.
  bool inFileValue() const;

  bool m_bSuccess;
  std::string m_errorText;
  common::AutoPtr<Parameter> m_curParamPtr;
  std::list<common::AutoPtr<Parameter> > m_paramStack;
  std::list<std::string> m_tagStack;
  // Folder of the file being parsed, with its "/"; empty for a text.
  std::string m_baseDir;
};

}  // namespace configure
}  // namespace vortm

#endif
