#include "common/CreatorRegister.h"

#include <atomic>

#include "common/InstanceCreator.h"
#include "common/Singleton.h"

#include "application/CombineSentiClassifier.h"

namespace vortm {
namespace common {

namespace {
template <class C>
void build() {
  Singleton<InstanceCreatorHelper<C>, LazyInstantiation, FastMutex>::instance();
}
}  // namespace

void gfn_creatorRegister() {
  static std::atomic<bool> s_registered(false);
  if (s_registered.load(std::memory_order_acquire)) return;
  // Each creator registers itself when its helper singleton is built.
  build<application::CombineSentiClassifierCreator>();
  s_registered.store(true, std::memory_order_release);
}

}  // namespace common
}  // namespace vortm
