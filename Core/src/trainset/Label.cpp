#include "trainset/Label.h"

#include "utility/Utility.h"

namespace vortm {
namespace trainset {

Label::Label(const std::string& id, const std::string& separator) {
  utility::Utility::strTokenize(id, separator, parts);
  assignIdentifier(separator);
}

Label::Label(const std::vector<std::string>& components, const std::string& separator) : parts(components) {
  assignIdentifier(separator);
}

void Label::assignIdentifier(const std::string& separator) {
  identifier.clear();
  for (size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) identifier += separator;
    identifier += parts[i];
  }
}

bool Label::operator==(const Label& other) const {
  if (parts.empty() || parts.size() != other.parts.size()) return false;
  return parts == other.parts;
}

bool Label::isSubLabelOf(const Label& other) const {
  if (parts.empty() || other.parts.empty() || parts.size() <= other.parts.size()) return false;
  for (size_t i = 0; i < other.parts.size(); ++i) {
    if (parts[i] != other.parts[i]) return false;
  }
  return true;
}

bool Label::isDirectSubLabelOf(const Label& other) const {
  return isSubLabelOf(other) && parts.size() == other.parts.size() + 1;
}

void Label::getDirectSuperLabel(Label& out) const {
  if (parts.size() < 2) return;
  out = Label(std::vector<std::string>(parts.begin(), parts.end() - 1), "/");
}

void Label::getSuperLabels(std::vector<Label>& out) {
  for (size_t n = 1; n < parts.size(); ++n) {
    out.push_back(Label(std::vector<std::string>(parts.begin(), parts.begin() + n), "/"));
  }
}

}  // namespace trainset
}  // namespace vortm
