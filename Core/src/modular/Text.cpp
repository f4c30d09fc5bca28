#include "modular/Text.h"

#include <cmath>

namespace vortm {
namespace modular {

// Products and squares are formed in single precision, as the weights are
// stored, and only the running sums are kept in double.

void Text::L2Normalize() {
  if (m_terms.empty()) return;
  double sum = 0.0;
  for (size_t i = 0; i < m_terms.size(); ++i) {
    float square = m_terms[i].weight * m_terms[i].weight;
    sum += square;
  }
  if (!(sum > 1e-10)) return;
  const double norm = std::sqrt(sum);
  for (size_t i = 0; i < m_terms.size(); ++i) m_terms[i].weight = static_cast<float>(m_terms[i].weight / norm);
}

double Text::cosSim(const Text& other) {
  double sum = 0.0;
  size_t i = 0;
  size_t j = 0;
  while (i < m_terms.size() && j < other.m_terms.size()) {
    if (m_terms[i].id == other.m_terms[j].id) {
      float product = m_terms[i].weight * other.m_terms[j].weight;
      sum += product;
      ++i;
      ++j;
    } else if (m_terms[i].id < other.m_terms[j].id) {
      ++i;
    } else {
      ++j;
    }
  }
  return sum;
}

}  // namespace modular
}  // namespace vortm
