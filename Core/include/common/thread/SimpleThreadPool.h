#ifndef VORTM_COMMON_THREAD_SIMPLETHREADPOOL_H
#define VORTM_COMMON_THREAD_SIMPLETHREADPOOL_H

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "common/thread/IThreadPool.h"

namespace vortm {
namespace common {

// Fixed workers over a bounded FIFO queue. A full queue makes submit() wait,
// so a fast producer cannot run ahead of the workers by more than the
// queue's capacity. The destructor shuts down with SHUTDOWN_FINISH.
class SimpleThreadPool : public IThreadPool {
 public:
  // 0 threads means one per core; a capacity of 0 means four per thread.
  explicit SimpleThreadPool(unsigned int threads = 0, size_t queueCapacity = 0);
  ~SimpleThreadPool() override;
  SimpleThreadPool(const SimpleThreadPool&) = delete;
  SimpleThreadPool& operator=(const SimpleThreadPool&) = delete;

  bool submit(Task task) override;
  bool trySubmit(Task task) override;
  void waitIdle() override;
  size_t shutdown(ShutdownMode mode) override;
  size_t takeErrors(std::vector<std::string>& out) override;
  unsigned int threadCount() const override { return static_cast<unsigned int>(m_workers.size()); }
  size_t queueCapacity() const override { return m_capacity; }

  // Counts since the pool started: tasks run to the end or to an exception,
  // and tasks dropped by a cancelling shutdown.
  size_t completedCount();
  size_t cancelledCount();

  // One per core as the system reports it, at least 1.
  static unsigned int defaultThreadCount();

 private:
  bool enqueue(Task& task, bool wait);
  void workerLoop();

  std::mutex m_mutex;
  std::condition_variable m_notEmpty;
  std::condition_variable m_notFull;
  std::condition_variable m_idle;
  std::deque<Task> m_queue;
  std::vector<std::thread> m_workers;
  std::vector<std::string> m_errors;
  size_t m_capacity;
  size_t m_running;
  size_t m_completed;
  size_t m_cancelled;
  bool m_accepting;
  bool m_stopping;
  // Set by the first shutdown; later ones return at once.
  bool m_shutDown;
};

}  // namespace common
}  // namespace vortm

#endif
