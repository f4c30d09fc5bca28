#ifndef VORTM_COMMON_AUTOPTR_H
#define VORTM_COMMON_AUTOPTR_H

#include <stdexcept>

#include "common/Assert.h"
#include "common/SharedObj.h"

namespace vortm {
namespace common {

// Reference-counted pointer through which components hold each other. It
// always has a count holder; a default one holds null. Non-owning pointers
// (owner false) free only their holder, never the object.
template <class T, class SHARED_OBJ = SharedObj<T> >
class AutoPtr {
 public:
  AutoPtr() : m_pSharedObj(new SHARED_OBJ(nullptr, true)) {}
  AutoPtr(T* p, bool owner) : m_pSharedObj(new SHARED_OBJ(p, owner)) {}
  AutoPtr(const AutoPtr& rhs) : m_pSharedObj(rhs.m_pSharedObj) { m_pSharedObj->countPlus(); }

  virtual ~AutoPtr() {
    VOR_ASSERT(m_pSharedObj);
    m_pSharedObj->countMinus();
  }

  AutoPtr& operator=(const AutoPtr& rhs) {
    if (this == &rhs || m_pSharedObj == rhs.m_pSharedObj) return *this;
    // Two separate holders of one object may exist, but assigning one to the
    // other would leave the object with two owners.
    VOR_ASSERT(!m_pSharedObj->getObjPtr() || m_pSharedObj->getObjPtr() != rhs.m_pSharedObj->getObjPtr());
    m_pSharedObj->countMinus();
    m_pSharedObj = rhs.m_pSharedObj;
    m_pSharedObj->countPlus();
    return *this;
  }

  AutoPtr& operator=(T* p) {
    if (p == m_pSharedObj->getObjPtr()) return *this;
    m_pSharedObj->countMinus();
    m_pSharedObj = new SHARED_OBJ(p, true);
    return *this;
  }

  T* operator->() const { return m_pSharedObj->getObjPtr(); }

  T& operator*() const {
    T* p = m_pSharedObj->getObjPtr();
    if (!p) throw std::runtime_error("null point error");
    return *p;
  }

  operator void*() const { return const_cast<void*>(static_cast<const void*>(m_pSharedObj->getObjPtr())); }

  bool operator==(const T* p) const { return m_pSharedObj->getObjPtr() == p; }
  bool operator!=(const T* p) const { return m_pSharedObj->getObjPtr() != p; }

  T* get() const { return m_pSharedObj->getObjPtr(); }
  int useCount() const { return m_pSharedObj->getCount(); }

 private:
  SHARED_OBJ* m_pSharedObj;
};

}  // namespace common
}  // namespace vortm

#endif
