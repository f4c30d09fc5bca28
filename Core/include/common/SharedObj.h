#ifndef VORTM_COMMON_SHAREDOBJ_H
#define VORTM_COMMON_SHAREDOBJ_H

#include "common/Assert.h"
#include "common/FastMutex.h"

namespace vortm {
namespace common {

// Reference count holder for AutoPtr, without a lock: a pointer that uses it
// may be shared by threads only if none of them copies or drops it.
template <class T>
class SharedObj {
 public:
  SharedObj(T* obj, bool owner) : m_count(1), m_pObj(obj), m_bOwner(owner) {}
  virtual ~SharedObj() {}

  void countPlus() { ++m_count; }

  // Deletes the object (when owned) and the holder itself at zero.
  int countMinus() {
    --m_count;
    VOR_ASSERT(m_count >= 0);
    if (m_count > 0) return m_count;
    release();
    return 0;
  }

  T* getObjPtr() const { return m_pObj; }
  int getCount() const { return m_count; }

 private:
  // Frees the object (when owned) and the holder. Kept out of line: inlined
  // into every pointer's destructor it only bloats the code and confuses the
  // compiler's use-after-free analysis.
  __attribute__((noinline)) void release() {
    if (m_bOwner) {
      if (m_pObj) delete m_pObj;
      m_pObj = nullptr;
    }
    delete this;
  }

  int m_count;
  T* m_pObj;
  bool m_bOwner;
};

// The same holder with its count guarded by a mutex, for objects that
// several threads copy and drop.
template <class T>
class SafeSharedObj {
 public:
  SafeSharedObj(T* obj, bool owner) : m_count(1), m_pObj(obj), m_bOwner(owner) {}
  virtual ~SafeSharedObj() {}

  void countPlus() {
    FastMutex::ScopedLock lock(m_mutex);
    ++m_count;
  }

  int countMinus() {
    int count;
    {
      FastMutex::ScopedLock lock(m_mutex);
      --m_count;
      VOR_ASSERT(m_count >= 0);
      // The value is taken under the lock: reading m_count again after
      // unlocking would let two threads both see zero and free twice.
      count = m_count;
    }
    if (count > 0) return count;
    release();
    return 0;
  }

  T* getObjPtr() const { return m_pObj; }
  int getCount() const { return m_count; }

 private:
  // Frees the object (when owned) and the holder. Kept out of line: inlined
  // into every pointer's destructor it only bloats the code and confuses the
  // compiler's use-after-free analysis.
  __attribute__((noinline)) void release() {
    if (m_bOwner) {
      if (m_pObj) delete m_pObj;
      m_pObj = nullptr;
    }
    delete this;
  }

  int m_count;
  T* m_pObj;
  bool m_bOwner;
  FastMutex m_mutex;
};

}  // namespace common
}  // namespace vortm

#endif
