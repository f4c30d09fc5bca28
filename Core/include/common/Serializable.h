#ifndef VORTM_COMMON_SERIALIZABLE_H
#define VORTM_COMMON_SERIALIZABLE_H

#include "common/ObjectReader.h"
#include "common/ObjectWriter.h"

namespace vortm {
namespace common {

// A saved object is exactly the sequence of primitives that writeSelf wrote;
// readSelf must ask for the same sequence in the same order.
class Serializable {
 public:
  virtual ~Serializable() {}
  virtual bool writeSelf(ObjectWriter& writer) = 0;
  virtual bool readSelf(ObjectReader& reader) = 0;
};

}  // namespace common
}  // namespace vortm

#endif
