#include "configure/BasicParamParser.h"

#include <iterator>

#include "common/Logger.h"
#include "utility/Utility.h"

namespace vortm {
namespace configure {

using common::AutoPtr;
using utility::CharIterator;
using utility::HashTable;

BasicParamParser::BasicParamParser() : m_bSuccess(true) {}

BasicParamParser::~BasicParamParser() {}

bool BasicParamParser::doParse(const std::string& fileName, AutoPtr<Parameter>& root) {
  utility::CharIteratorFile* file = new utility::CharIteratorFile();
  AutoPtr<CharIterator> input(file, true);
  // A file that cannot be opened reads as empty input, which fails below;
  // the reason is worth a record of its own.
  if (!file->setFile(fileName))
    common::gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Unable to Read Config File " + fileName + ": " +
                                                              file->getOpenError());
  std::string::size_type slash = fileName.rfind('/');
  m_baseDir = slash == std::string::npos ? std::string() : fileName.substr(0, slash + 1);
  bool parsed = parse(input, root);
  m_baseDir.clear();
  return parsed;
}

bool BasicParamParser::doParseFromText(const std::string& text, AutoPtr<Parameter>& root) {
  utility::CharIteratorText* textInput = new utility::CharIteratorText();
  AutoPtr<CharIterator> input(textInput, true);
  textInput->setText(text);
  m_baseDir.clear();
  return parse(input, root);
}

bool BasicParamParser::parse(AutoPtr<CharIterator> input, AutoPtr<Parameter>& root) {
  m_bSuccess = true;
  m_errorText.clear();
  m_paramStack.clear();
  m_tagStack.clear();

  m_curParamPtr = AutoPtr<Parameter>(new Parameter(), true);
  m_paramStack.push_back(m_curParamPtr);
  m_tagStack.push_back("root");
  root = m_curParamPtr;

  utility::BasicXMLParser parser(input);
  parser.addListener(AutoPtr<utility::Listener>(this, false));
  bool parsed = parser.doParse();

  // The tree belongs to the caller now; keep no node of it alive here.
  m_paramStack.clear();
  m_tagStack.clear();
  m_curParamPtr = AutoPtr<Parameter>();
  return parsed && m_bSuccess;
}

void BasicParamParser::onTagBegin(const std::string& tag, HashTable<std::string, std::string>& attributes) {
  if (!m_bSuccess || !m_curParamPtr) return;
  // The stack holds the implicit root too, so its size is the new element's
  // depth. The tree, its copies and its printing recurse by level.
  if (m_paramStack.size() > Parameter::MAX_DEPTH) {
    m_bSuccess = false;
    m_errorText = "Config Nested Deeper than " + std::to_string(Parameter::MAX_DEPTH) + " Levels";
    common::gfn_pLoggerInstance(0, "", 0)->LogWarn("101", m_errorText);
    return;
  }

  std::string type;
  AutoPtr<Parameter> node;
  if (attributes.get("type", type)) utility::Utility::toLowcase(type);
  if (type == "int") {
    node = new ParameterInt();
  } else if (type == "numeric" || type == "float") {
    node = new ParameterFloat();
  } else {
    node = new Parameter();
  }

  m_curParamPtr->appendSubParam(tag, node);
  m_paramStack.push_back(node);
  m_tagStack.push_back(tag);
  m_curParamPtr = node;
}

bool BasicParamParser::inFileValue() const {
  const std::string& tag = m_tagStack.back();
  if (tag.find("_file") != std::string::npos) return true;
  if (m_tagStack.size() < 2) return false;
  const std::string& list = *std::next(m_tagStack.rbegin());
  return list.size() > 6 && list.compare(list.size() - 6, 6, "_files") == 0;
}

void BasicParamParser::onTextEnd(const std::string& text) {
  if (!m_bSuccess || !m_curParamPtr) return;
  if (!m_baseDir.empty() && !text.empty() && text[0] != '/' && inFileValue()) {
    m_curParamPtr->setValue(m_baseDir + text);
  } else {
    m_curParamPtr->setValue(text);
  }
}

void BasicParamParser::onTagEnd(const std::string& tag) {
  if (!m_bSuccess) return;
  if (m_paramStack.empty()) {
    m_bSuccess = false;
    m_errorText = "Tags not in Pairs";
    return;
  }
  if (tag != m_tagStack.back()) {
    m_bSuccess = false;
    m_errorText = "Tag not Matched, with ";
    m_errorText += " Begining Tag: " + m_tagStack.back();
    m_errorText += " Ending Tag: " + tag;
  }
  m_paramStack.pop_back();
  m_tagStack.pop_back();
  if (!m_paramStack.empty()) {
    m_curParamPtr = m_paramStack.back();
  } else {
    // The closing tag popped the implicit root: one closing tag too many.
    m_bSuccess = false;
    m_errorText = "Tags not in Pairs";
  }
}

}  // namespace configure
}  // namespace vortm
