#include "common/FastMutex.h"

namespace vortm {
namespace common {

MutexImpl::MutexImpl() { init(PTHREAD_MUTEX_RECURSIVE); }

MutexImpl::MutexImpl(bool type) { init(static_cast<int>(type)); }

void MutexImpl::init(int type) {
  pthread_mutexattr_t attr;
  pthread_mutexattr_init(&attr);
  pthread_mutexattr_settype(&attr, type);
  pthread_mutex_init(&m_mutex, &attr);
  pthread_mutexattr_destroy(&attr);
}

MutexImpl::~MutexImpl() { pthread_mutex_destroy(&m_mutex); }

void MutexImpl::lockImpl() { pthread_mutex_lock(&m_mutex); }

bool MutexImpl::tryLockImpl() { return pthread_mutex_trylock(&m_mutex) == 0; }

void MutexImpl::unlockImpl() { pthread_mutex_unlock(&m_mutex); }

FastMutex::FastMutex() : m_pImpl(new FastMutexImpl()) {}

FastMutex::~FastMutex() { delete m_pImpl; }

void FastMutex::lock() { m_pImpl->lockImpl(); }

bool FastMutex::tryLock() { return m_pImpl->tryLockImpl(); }

void FastMutex::unlock() { m_pImpl->unlockImpl(); }

}  // namespace common
}  // namespace vortm
