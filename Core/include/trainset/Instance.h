#ifndef VORTM_TRAINSET_INSTANCE_H
#define VORTM_TRAINSET_INSTANCE_H

#include "trainset/Label.h"
#include "utility/MySparseVector.h"

namespace vortm {
namespace trainset {

// A labelled document vector.
class Instance {
 public:
  // Scales the vector to unit length; a (near) zero vector is left alone.
  void L2Normal();

  utility::MySparseVector<double, int> vector;
  Label label;
};

}  // namespace trainset
}  // namespace vortm

#endif
