#include "utility/BasicXMLParser.h"

namespace vortm {
namespace utility {

using common::AutoPtr;

namespace {

inline bool isBlank(char c) { return c == '\r' || c == ' ' || c == '\t' || c == '\n'; }

}  // namespace

BasicXMLParser::BasicXMLParser() : m_bDone(false) {}

BasicXMLParser::BasicXMLParser(AutoPtr<CharIterator> input) : m_charIteratorPtr(input), m_bDone(false) {}

BasicXMLParser::~BasicXMLParser() {}

void BasicXMLParser::setCharIterator(AutoPtr<CharIterator> input) {
  m_charIteratorPtr = input;
  m_bDone = false;
}

void BasicXMLParser::addListener(AutoPtr<Listener> listener) { m_listeners.push_back(listener); }

bool BasicXMLParser::doParse() {
  while (doParseStepByStep() && !m_bDone) {
  }
  return m_bDone;
}

bool BasicXMLParser::doParseStepByStep() {
  if (!m_charIteratorPtr) return false;
  CharIterator& in = *m_charIteratorPtr;
  std::string buffer;
  bool inText = false;
  bool tagClosed = false;
  bool stop = false;
  char c = 0;

  if (!in.nextCharNonWhitespace(c)) return false;
  while (true) {
    // Text up to the next tag; only text inside an open element is kept.
    while (c != '<') {
      if (inText) buffer += c;
      if (!in.nextChar(c)) {
        buffer.clear();
        if (inText) return false;
        m_bDone = true;
        return true;
      }
    }

    tagClosed = false;
    if (!in.nextCharNonWhitespace(c)) return false;

    if (c == '/') {
      // Closing tag: everything up to ">", blanks included, is the name.
      if (!in.nextCharNonWhitespace(c)) return false;
      std::string name(1, c);
      while (true) {
        if (!in.nextChar(c)) return false;
        if (c == '>') break;
        name += c;
      }
      notifyTextEnd(buffer);
      buffer.clear();
      tagClosed = true;
      notifyTagEnd(name, stop);
      if (stop) return true;
      inText = false;
    } else {
      std::string name(1, c);
      while (true) {
        if (!in.nextChar(c)) return false;
        if (isBlank(c) || c == '/' || c == '>') break;
        name += c;
      }

      if (c == '/') {
        // "<a/>": whatever stands between "/" and ">" is dropped.
        do {
          if (!in.nextChar(c)) return false;
        } while (c != '>');
        HashTable<std::string, std::string> attributes;
        notifyTagBegin(name, attributes);
        tagClosed = true;
        notifyTagEnd(name, stop);
        if (stop) return true;
      } else if (c == '>') {
        HashTable<std::string, std::string> attributes;
        notifyTagBegin(name, attributes);
        buffer.clear();
        inText = true;
      } else if (name == "!--") {
        // A comment runs to its first ">".
        do {
          if (!in.nextChar(c)) return false;
        } while (c != '>');
      } else {
        HashTable<std::string, std::string> attributes;
        if (!attValueParse(attributes, tagClosed)) return false;
        if (name == "?xml" || name == "?XML") {
          attributes.get("version", m_version);
          attributes.get("encoding", m_encoding);
        } else {
          notifyTagBegin(name, attributes);
          if (!tagClosed) {
            buffer.clear();
            inText = true;
          } else {
            notifyTagEnd(name, stop);
            if (stop) return true;
          }
        }
      }
    }

    // Leading blanks of a value are dropped here, trailing ones are kept.
    if (!in.nextCharNonWhitespace(c)) {
      if (tagClosed) m_bDone = true;
      return tagClosed;
    }
  }
}

void BasicXMLParser::notifyTagBegin(const std::string& tag, HashTable<std::string, std::string>& attributes) {
  for (size_t i = 0; i < m_listeners.size(); ++i) m_listeners[i]->onTagBegin(tag, attributes);
}

void BasicXMLParser::notifyTextEnd(const std::string& text) {
  for (size_t i = 0; i < m_listeners.size(); ++i) m_listeners[i]->onTextEnd(text);
}

void BasicXMLParser::notifyTagEnd(const std::string& tag) {
  for (size_t i = 0; i < m_listeners.size(); ++i) m_listeners[i]->onTagEnd(tag);
}

void BasicXMLParser::notifyTagEnd(const std::string& tag, bool& stop) {
  stop = false;
  for (size_t i = 0; i < m_listeners.size(); ++i) {
    bool listenerStop = false;
    m_listeners[i]->onTagEnd(tag, listenerStop);
    if (listenerStop) stop = true;
  }
}

bool BasicXMLParser::attValueParse(HashTable<std::string, std::string>& attributes, bool& selfClosed) {
  CharIterator& in = *m_charIteratorPtr;
  char c = 0;
  selfClosed = false;
  if (!in.nextCharNonWhitespace(c)) return false;
  if (c == '>') return true;

  while (true) {
    // "/>" closes a tag, "?>" a declaration.
    if (c == '/' || c == '?') {
      if (!in.nextCharNonWhitespace(c) || c != '>') return false;
      selfClosed = true;
      return true;
    }

    std::string name(1, c);
    bool lost = false;
    while (true) {
      if (!in.nextChar(c)) return false;
      if (c == '=') break;
      if (c == '>') return true;
      if (isBlank(c)) {
        // A blank before "=" ends the attribute without a value.
        if (!in.nextCharNonWhitespace(c)) return false;
        if (c == '>') return true;
        lost = true;
        break;
      }
      name += c;
    }
    if (lost) continue;

    if (!in.nextCharNonWhitespace(c)) return true;
    std::string value;
    if (c == '"' || c == '\'') {
      const char quote = c;
      while (true) {
        if (!in.nextChar(c)) return false;
        if (c == quote) break;
        value += c;
      }
    } else {
      while (c != '>' && c != '/' && !isBlank(c)) {
        value += c;
        if (!in.nextChar(c)) return false;
      }
      if (c == '/') {
        attributes.putReplace(name, value);
        if (!in.nextCharNonWhitespace(c) || c != '>') return false;
        selfClosed = true;
        return true;
      }
    }

    attributes.putReplace(name, value);
    if (c == '>') return true;
    if (!in.nextCharNonWhitespace(c)) return false;
    if (c == '>') return true;
  }
}

}  // namespace utility
}  // namespace vortm
