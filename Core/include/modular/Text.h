#ifndef VORTM_MODULAR_TEXT_H
#define VORTM_MODULAR_TEXT_H

#include <string>
#include <vector>

namespace vortm {
namespace modular {

// One weighted term of a Text.
struct TextTerm {
  TextTerm() : id(0), weight(0.0f) {}
  TextTerm(const std::string& t, int i, float w) : term(t), id(i), weight(w) {}

  std::string term;
  int id;
  float weight;
};

// A sparse list of weighted terms, the input of the document vector
// builders. The terms must be kept in ascending order of id: both operations
// depend on it and neither restores it.
class Text {
 public:
  Text() : m_id(0) {}

  // Scales the weights to unit length; a list of (near) zero length is left
  // as it is.
  void L2Normalize();
  // The dot product over common ids. It does not divide by the norms, so it
  // is a cosine only between normalised lists.
  double cosSim(const Text& other);

  // Free for the caller, e.g. a document number; no operation here reads it.
  int m_id;
  std::vector<TextTerm> m_terms;
};

}  // namespace modular
}  // namespace vortm

#endif
