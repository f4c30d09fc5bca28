#ifndef VORTM_COMMON_CREATORREGISTER_H
#define VORTM_COMMON_CREATORREGISTER_H

namespace vortm {
namespace common {

// Builds every registered creator once, so that identifiers resolve.
// Called at the head of each operation that looks an identifier up.
void gfn_creatorRegister();

}  // namespace common
}  // namespace vortm

#endif
