#ifndef VORTM_COMMON_SINGLETON_H
#define VORTM_COMMON_SINGLETON_H

#include <atomic>

#include "common/FastMutex.h"

namespace vortm {
namespace common {

// Deletes a lazily created object at process exit and clears its pointer.
template <class T>
class Destroyer {
 public:
  Destroyer() : m_ppObj(nullptr) {}
  ~Destroyer() {
    if (m_ppObj && *m_ppObj) {
      delete *m_ppObj;
      *m_ppObj = nullptr;
    }
  }
  void setDoomed(T** pp) { m_ppObj = pp; }

 private:
  T** m_ppObj;
};

struct LazyInstantiation {
  template <class T>
  static void create(T*& p) {
    p = new T;
    static Destroyer<T> destroyer;
    destroyer.setDoomed(&p);
  }
};

struct ParameterizedLazyInstantiation {
  template <class T, class Config>
  static void create(T*& p, Config& c) {
    p = new T(c);
    static Destroyer<T> destroyer;
    destroyer.setDoomed(&p);
  }
};

// Double-checked creation: once the object exists, instance() reads a flag
// and the pointer without taking the lock. The flag is atomic only so that
// the publication of the new object is ordered for every thread.
template <class T, class CreationPolicy = LazyInstantiation, class LockPolicy = FastMutex>
class Singleton {
 public:
  static T* instance() {
    static LockPolicy lock;
    if (s_created.load(std::memory_order_acquire)) return s_pInstance;
    lock.lock();
    if (!s_pInstance) {
      CreationPolicy::create(s_pInstance);
      s_created.store(true, std::memory_order_release);
    }
    lock.unlock();
    return s_pInstance;
  }

 private:
  static T* s_pInstance;
  static std::atomic<bool> s_created;
};

template <class T, class CreationPolicy, class LockPolicy>
T* Singleton<T, CreationPolicy, LockPolicy>::s_pInstance = nullptr;
template <class T, class CreationPolicy, class LockPolicy>
std::atomic<bool> Singleton<T, CreationPolicy, LockPolicy>::s_created(false);

// The configuration counts only on the call that creates the object.
template <class T, class Config, class CreationPolicy = ParameterizedLazyInstantiation,
          class LockPolicy = FastMutex>
class ParameterizedSingleton {
 public:
  static T* instance(Config& config) {
    static LockPolicy lock;
    if (s_created.load(std::memory_order_acquire)) return s_pInstance;
    lock.lock();
    if (!s_pInstance) {
      CreationPolicy::create(s_pInstance, config);
      s_created.store(true, std::memory_order_release);
    }
    lock.unlock();
    return s_pInstance;
  }

 private:
  static T* s_pInstance;
  static std::atomic<bool> s_created;
};

template <class T, class Config, class CreationPolicy, class LockPolicy>
T* ParameterizedSingleton<T, Config, CreationPolicy, LockPolicy>::s_pInstance = nullptr;
template <class T, class Config, class CreationPolicy, class LockPolicy>
std::atomic<bool> ParameterizedSingleton<T, Config, CreationPolicy, LockPolicy>::s_created(false);

}  // namespace common
}  // namespace vortm

#endif
