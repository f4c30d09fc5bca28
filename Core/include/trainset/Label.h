#ifndef VORTM_TRAINSET_LABEL_H
#define VORTM_TRAINSET_LABEL_H

#include <string>
#include <vector>

namespace vortm {
namespace trainset {

// A class in a hierarchy, as a path of components ("top/sub"). An empty
// label equals nothing, itself included, so it can stand for "no class".
class Label {
 public:
  Label() {}
  Label(const std::string& identifier, const std::string& separator);
  Label(const std::vector<std::string>& parts, const std::string& separator);

  void assignIdentifier(const std::string& separator);
  bool operator==(const Label& other) const;
  bool isSubLabelOf(const Label& other) const;
  bool isDirectSubLabelOf(const Label& other) const;
  // Leaves `out` unchanged when this label has fewer than two components.
  void getDirectSuperLabel(Label& out) const;
  // Appends the ancestors, shortest first; `out` is not cleared.
  void getSuperLabels(std::vector<Label>& out);

  std::vector<std::string> parts;
  std::string identifier;
};

}  // namespace trainset
}  // namespace vortm

#endif
