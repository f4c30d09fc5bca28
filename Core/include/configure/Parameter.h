#ifndef VORTM_CONFIGURE_PARAMETER_H
#define VORTM_CONFIGURE_PARAMETER_H

#include <string>
#include <vector>

#include "common/AutoPtr.h"
#include "common/ObjectReader.h"
#include "common/ObjectWriter.h"
#include "common/Serializable.h"
#include "utility/HashTable.h"

namespace vortm {
namespace configure {

// One node of the configuration tree: a text value, named children in
// document order, and a weak link to the parent so that a missing key can be
// looked up in the enclosing blocks.
class Parameter : public common::Serializable {
 public:
  // The deepest nesting that the XML reader and readSelf accept. Far beyond
  // any real configuration, and low enough that the recursive walks (copy,
  // printing, saving) stay well inside a small thread stack.
  static const unsigned int MAX_DEPTH = 1000;

  Parameter();
  // Deep copies: the children are cloned, the target keeps no old child.
  Parameter(const Parameter& other);
  Parameter& operator=(const Parameter& other);
  virtual ~Parameter();

  bool writeSelf(common::ObjectWriter& writer) override;
  bool readSelf(common::ObjectReader& reader) override;

  virtual bool getIntValue(int& value) const;
  virtual bool getFloatValue(double& value) const;
  virtual bool getStringValue(std::string& value) const;
  virtual void setValue(const std::string& value);
  // 0 plain, 1 int, 2 float; the code saved trees carry.
  virtual int getParamType() const;
  // A new empty node of the same class, owned by the caller.
  virtual Parameter* newInstance() const;

  common::AutoPtr<Parameter> clone() const;

  void appendSubParam(const std::string& name, common::AutoPtr<Parameter> child);
  // The child called `name` of this node or of the nearest ancestor that has
  // one; null if none has.
  common::AutoPtr<Parameter> getSubParamPtr(const std::string& name) const;

  // Dotted path, each step resolved upwards; ParameterNULL when not found.
  const Parameter& operator[](const std::string& path) const;
  // Child by document position; ParameterNULL when out of range.
  const Parameter& operator[](int index) const;

  std::string toString() const;

  bool isNull() const { return m_bNull; }
  unsigned int size() const { return static_cast<unsigned int>(m_subParams.size()); }
  unsigned int getSubParamCount() const { return size(); }
  // Name of the child at a document position; empty when out of range.
  std::string getSubParamName(unsigned int index) const {
    return index < m_subParamNames.size() ? m_subParamNames[index] : std::string();
  }

 protected:
  void clearSubParams();
  // readSelf for a node `depth` levels below the one readSelf was called on.
  bool readSelfAt(common::ObjectReader& reader, unsigned int depth);

  bool m_bNull;
  std::string m_value;
  utility::HashTable<std::string, common::AutoPtr<Parameter> > m_subParamTable;
  std::vector<std::string> m_subParamNames;
  std::vector<common::AutoPtr<Parameter> > m_subParams;
  // Non-owning, so that parent and child form no count cycle.
  common::AutoPtr<Parameter> m_parentPtr;
};

class ParameterInt : public Parameter {
 public:
  ParameterInt();

  bool getIntValue(int& value) const override;
  void setValue(const std::string& value) override;
  int getParamType() const override;
  Parameter* newInstance() const override;

 protected:
  int m_intValue;
};

class ParameterFloat : public Parameter {
 public:
  ParameterFloat();

  bool getFloatValue(double& value) const override;
  void setValue(const std::string& value) override;
  int getParamType() const override;
  Parameter* newInstance() const override;

 protected:
  double m_floatValue;
};

// What every failed look-up returns, so that look-ups chain without tests:
// it is null, has no children and answers false to every getter.
extern Parameter ParameterNULL;

}  // namespace configure
}  // namespace vortm

#endif
