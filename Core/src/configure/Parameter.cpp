#include "configure/Parameter.h"

#include <cstdlib>

#include "utility/Utility.h"

namespace vortm {
namespace configure {

using common::AutoPtr;

Parameter ParameterNULL;

const unsigned int Parameter::MAX_DEPTH;

Parameter::Parameter() : m_bNull(true) {}

Parameter::Parameter(const Parameter& other) : common::Serializable(), m_bNull(true) {
  setValue(other.m_value);
  for (size_t i = 0; i < other.m_subParams.size(); ++i) {
    appendSubParam(other.m_subParamNames[i], other.m_subParams[i]->clone());
  }
}

Parameter& Parameter::operator=(const Parameter& other) {
  if (this == &other) return *this;
  clearSubParams();
  setValue(other.m_value);
  for (size_t i = 0; i < other.m_subParams.size(); ++i) {
    appendSubParam(other.m_subParamNames[i], other.m_subParams[i]->clone());
  }
  return *this;
}

Parameter::~Parameter() { clearSubParams(); }

// Frees the subtree without recursion: a node that only this walk still holds
// gives up its children to the walk before it goes, so a tree nested
// thousands of levels deep never costs a stack frame per level. A child that
// is held elsewhere stays alive with its children.
void Parameter::clearSubParams() {
  m_subParamTable.destroy();
  m_subParamNames.clear();
  std::vector<AutoPtr<Parameter> > pending;
  pending.swap(m_subParams);
  while (!pending.empty()) {
    AutoPtr<Parameter> node = pending.back();
    pending.pop_back();
    if (node.useCount() != 1) continue;
    node->m_subParamTable.destroy();
    node->m_subParamNames.clear();
    for (size_t i = 0; i < node->m_subParams.size(); ++i) pending.push_back(node->m_subParams[i]);
    node->m_subParams.clear();
  }
}

bool Parameter::getIntValue(int&) const { return false; }

bool Parameter::getFloatValue(double&) const { return false; }

bool Parameter::getStringValue(std::string& value) const {
  if (m_bNull) return false;
  value = m_value;
  return true;
}

void Parameter::setValue(const std::string& value) {
  m_value = value;
  if (!value.empty()) m_bNull = false;
}

int Parameter::getParamType() const { return 0; }

Parameter* Parameter::newInstance() const { return new Parameter(); }

AutoPtr<Parameter> Parameter::clone() const {
  AutoPtr<Parameter> copy(newInstance(), true);
  copy->setValue(m_value);
  for (size_t i = 0; i < m_subParams.size(); ++i) {
    copy->appendSubParam(m_subParamNames[i], m_subParams[i]->clone());
  }
  return copy;
}

void Parameter::appendSubParam(const std::string& name, AutoPtr<Parameter> child) {
  if (!child || child == &ParameterNULL) return;
  // A child appended twice to this node already holds a link to it; a second
  // separate holder of the same node must not be assigned over the first.
  if (child->m_parentPtr != this) child->m_parentPtr = AutoPtr<Parameter>(this, false);
  m_subParamTable.putReplace(name, child);
  m_subParamNames.push_back(name);
  m_subParams.push_back(child);
  m_bNull = false;
}

AutoPtr<Parameter> Parameter::getSubParamPtr(const std::string& name) const {
  const Parameter* node = this;
  while (node) {
    AutoPtr<Parameter> found;
    if (node->m_subParamTable.get(name, found)) return found;
    node = node->m_parentPtr.get();
  }
  return AutoPtr<Parameter>();
}

const Parameter& Parameter::operator[](const std::string& path) const {
  std::vector<std::string> keys;
  utility::Utility::strTokenize(path, ".", keys);
  // The walk starts from a holder of its own; it never owns this node.
  AutoPtr<Parameter> cur(const_cast<Parameter*>(this), false);
  for (size_t i = 0; i < keys.size() && cur; ++i) {
    cur = cur->getSubParamPtr(keys[i]);
  }
  if (cur) return *cur;
  return ParameterNULL;
}

const Parameter& Parameter::operator[](int index) const {
  if (index < 0 || static_cast<size_t>(index) >= m_subParams.size()) return ParameterNULL;
  return *m_subParams[index];
}

std::string Parameter::toString() const {
  std::string out;
  if (!m_subParams.empty()) {
    for (size_t i = 0; i < m_subParams.size(); ++i) {
      out += "<" + m_subParamNames[i] + ">\n";
      out += m_subParams[i]->toString();
      out += "</" + m_subParamNames[i] + ">\n";
    }
  } else {
    std::string text;
    if (getStringValue(text)) out += text + "\n";
  }
  return out;
}

bool Parameter::writeSelf(common::ObjectWriter& writer) {
  if (!writer.writeString(m_value)) return false;
  if (!writer.writeUint32(static_cast<unsigned int>(m_subParams.size()))) return false;
  for (size_t i = 0; i < m_subParams.size(); ++i) {
    if (!writer.writeString(m_subParamNames[i])) return false;
    // The code recorded is this node's type, not the child's; it is part of
    // the saved format, so children of a plain node load back as plain nodes.
    if (!writer.writeInt16(static_cast<short>(getParamType()))) return false;
    if (!m_subParams[i]->writeSelf(writer)) return false;
  }
  return true;
}

bool Parameter::readSelf(common::ObjectReader& reader) { return readSelfAt(reader, 0); }

bool Parameter::readSelfAt(common::ObjectReader& reader, unsigned int depth) {
  clearSubParams();
  std::string text;
  if (!reader.readString(text)) return false;
  setValue(text);
  unsigned int count = 0;
  if (!reader.readUint32(count) || count == 0) return true;
  for (unsigned int i = 0; i < count; ++i) {
    std::string name;
    short type = 0;
    if (!reader.readString(name) || !reader.readInt16(type)) return false;
    AutoPtr<Parameter> child;
    switch (type) {
      case 0: child = new Parameter(); break;
      case 1: child = new ParameterInt(); break;
      case 2: child = new ParameterFloat(); break;
      default: return false;
    }
    // A forged file could nest without end; each level is a stack frame here.
    if (depth + 1 > MAX_DEPTH || !child->readSelfAt(reader, depth + 1)) return false;
    appendSubParam(name, child);
  }
  return true;
}

ParameterInt::ParameterInt() : m_intValue(0) {}

bool ParameterInt::getIntValue(int& value) const {
  if (m_bNull) return false;
  value = m_intValue;
  return true;
}

void ParameterInt::setValue(const std::string& value) {
  Parameter::setValue(value);
  if (!value.empty()) m_intValue = static_cast<int>(std::strtol(value.c_str(), nullptr, 10));
}

int ParameterInt::getParamType() const { return 1; }

Parameter* ParameterInt::newInstance() const { return new ParameterInt(); }

ParameterFloat::ParameterFloat() : m_floatValue(0.0) {}

bool ParameterFloat::getFloatValue(double& value) const {
  if (m_bNull) return false;
  value = m_floatValue;
  return true;
}

void ParameterFloat::setValue(const std::string& value) {
  Parameter::setValue(value);
  if (!value.empty()) m_floatValue = std::strtod(value.c_str(), nullptr);
}

int ParameterFloat::getParamType() const { return 2; }

Parameter* ParameterFloat::newInstance() const { return new ParameterFloat(); }

}  // namespace configure
}  // namespace vortm
