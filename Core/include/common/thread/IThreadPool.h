#ifndef VORTM_COMMON_THREAD_ITHREADPOOL_H
#define VORTM_COMMON_THREAD_ITHREADPOOL_H

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace vortm {
namespace common {

// A pool of worker threads fed from one task queue. A task that throws does
// not take its worker down: the exception's text is kept for the caller to
// collect with takeErrors().
class IThreadPool {
 public:
  typedef std::function<void()> Task;

  // What shutdown() does with tasks still waiting in the queue.
  enum ShutdownMode { SHUTDOWN_FINISH = 0, SHUTDOWN_CANCEL = 1 };

  virtual ~IThreadPool() {}

  // Queues a task, waiting while the queue is full. False once the pool has
  // been shut down, or for an empty task; the task is then not run.
  virtual bool submit(Task task) = 0;
  // As submit(), but false at once when the queue is full.
  virtual bool trySubmit(Task task) = 0;
  // Waits until every task accepted so far has run or been cancelled.
  virtual void waitIdle() = 0;
  // Stops accepting tasks, finishes or drops the queued ones, waits for the
  // running ones and joins the workers. Answers how many were dropped. Later
  // calls do nothing and answer 0.
  virtual size_t shutdown(ShutdownMode mode) = 0;

  // Moves the texts of the exceptions thrown by tasks into `out`, oldest
  // first, and answers how many were moved.
  virtual size_t takeErrors(std::vector<std::string>& out) = 0;

  virtual unsigned int threadCount() const = 0;
  virtual size_t queueCapacity() const = 0;
};

// Runs work(i) for every i below n on the pool, `chunk` items to a task (0:
// about four tasks per thread), and waits until all have run. After queueing
// each task the calling thread hands `progress`, if given, the number of
// items finished so far; it ends with n. Since a full queue makes the
// caller wait, the figures follow the work.
void forEachOnPool(IThreadPool& pool, size_t n, const std::function<void(size_t)>& work, size_t chunk = 0,
                   const std::function<void(size_t)>& progress = std::function<void(size_t)>());

}  // namespace common
}  // namespace vortm

#endif
