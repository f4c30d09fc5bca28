#ifndef VORTM_COMMON_FASTMUTEX_H
#define VORTM_COMMON_FASTMUTEX_H

#include <pthread.h>

namespace vortm {
namespace common {

// A POSIX mutex; the bool chooses the mutex type handed to
// pthread_mutexattr_settype, so true gives a recursive mutex.
class MutexImpl {
 public:
  MutexImpl();
  explicit MutexImpl(bool type);
  ~MutexImpl();
  MutexImpl(const MutexImpl&) = delete;
  MutexImpl& operator=(const MutexImpl&) = delete;

  void lockImpl();
  bool tryLockImpl();
  void unlockImpl();

 private:
  void init(int type);
  pthread_mutex_t m_mutex;
};

class FastMutexImpl : public MutexImpl {
 public:
  FastMutexImpl() : MutexImpl(true) {}
};

// The lock used throughout the library. Recursive: a thread may take a
// FastMutex that it already holds.
class FastMutex {
 public:
  FastMutex();
  ~FastMutex();
  FastMutex(const FastMutex&) = delete;
  FastMutex& operator=(const FastMutex&) = delete;

  void lock();
  bool tryLock();
  void unlock();

  class ScopedLock {
   public:
    explicit ScopedLock(FastMutex& mutex) : m_mutex(mutex) { m_mutex.lock(); }
    ~ScopedLock() { m_mutex.unlock(); }
    ScopedLock(const ScopedLock&) = delete;
    ScopedLock& operator=(const ScopedLock&) = delete;

   private:
    FastMutex& m_mutex;
  };

 private:
  FastMutexImpl* m_pImpl;
};

}  // namespace common
}  // namespace vortm

#endif
