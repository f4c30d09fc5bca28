#include "trainset/Instance.h"

#include <cmath>
#include <stdexcept>

namespace vortm {
namespace trainset {

void Instance::L2Normal() {
  double sum = 0.0;
  for (int i = 0; i < vector.size(); ++i) {
    const double* value = vector.getIdValuePairByIndex(i).second;
    if (value == nullptr) throw std::runtime_error("null point error");
    sum += *value * *value;
  }
  if (sum <= 1e-05) return;
  double norm = std::sqrt(sum);
  for (int i = 0; i < vector.size(); ++i) *vector.getIdValuePairByIndex(i).second /= norm;
}

}  // namespace trainset
}  // namespace vortm
