#include "common/thread/SimpleThreadPool.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <utility>

#include "common/Logger.h"

namespace vortm {
namespace common {

void forEachOnPool(IThreadPool& pool, size_t n, const std::function<void(size_t)>& work, size_t chunk,
                   const std::function<void(size_t)>& progress) {
  if (chunk == 0) chunk = n / (4 * static_cast<size_t>(std::max(1u, pool.threadCount()))) + 1;
  std::atomic<size_t> done(0);
  for (size_t begin = 0; begin < n; begin += chunk) {
    const size_t end = std::min(n, begin + chunk);
    pool.submit([&work, &done, begin, end] {
      for (size_t i = begin; i < end; ++i) work(i);
      done += end - begin;
    });
    if (progress) progress(done.load());
  }
  pool.waitIdle();
  if (progress) progress(n);
}

unsigned int SimpleThreadPool::defaultThreadCount() {
  unsigned int n = std::thread::hardware_concurrency();
  return n ? n : 1;
}

SimpleThreadPool::SimpleThreadPool(unsigned int threads, size_t capacity)
    : m_capacity(capacity),
      m_running(0),
      m_completed(0),
      m_cancelled(0),
      m_accepting(true),
      m_stopping(false),
      m_shutDown(false) {
  if (threads == 0) threads = defaultThreadCount();
  if (m_capacity == 0) m_capacity = 4 * static_cast<size_t>(threads);
  m_workers.reserve(threads);
  for (unsigned int i = 0; i < threads; ++i) m_workers.emplace_back(&SimpleThreadPool::workerLoop, this);
}

SimpleThreadPool::~SimpleThreadPool() { shutdown(SHUTDOWN_FINISH); }

bool SimpleThreadPool::submit(Task task) { return enqueue(task, true); }

bool SimpleThreadPool::trySubmit(Task task) { return enqueue(task, false); }

bool SimpleThreadPool::enqueue(Task& task, bool wait) {
  if (!task) return false;
  std::unique_lock<std::mutex> lock(m_mutex);
  if (wait) {
    m_notFull.wait(lock, [this] { return !m_accepting || m_queue.size() < m_capacity; });
  }
  if (!m_accepting || m_queue.size() >= m_capacity) return false;
  m_queue.push_back(std::move(task));
  m_notEmpty.notify_one();
  return true;
}

void SimpleThreadPool::workerLoop() {
  std::unique_lock<std::mutex> lock(m_mutex);
  for (;;) {
    m_notEmpty.wait(lock, [this] { return m_stopping || !m_queue.empty(); });
    if (m_queue.empty()) return;  // stopping, and nothing left to run
    Task task = std::move(m_queue.front());
    m_queue.pop_front();
    ++m_running;
    m_notFull.notify_one();
    lock.unlock();

    std::string error;
    bool failed = false;
    try {
      task();
    } catch (const std::exception& e) {
      failed = true;
      error = e.what();
    } catch (...) {
      failed = true;
      error = "unknown exception";
    }
    // Free what the task holds before the pool counts it as done, so that a
    // caller woken by waitIdle() finds its captures released.
    task = Task();
    if (failed) gfn_pLoggerInstance(0, "", 0)->LogError("301", "Task Failed in Thread Pool: " + error);

    lock.lock();
    if (failed) m_errors.push_back(error);
    --m_running;
    ++m_completed;
    if (m_running == 0 && m_queue.empty()) m_idle.notify_all();
  }
}

void SimpleThreadPool::waitIdle() {
  std::unique_lock<std::mutex> lock(m_mutex);
  m_idle.wait(lock, [this] { return m_running == 0 && m_queue.empty(); });
}

size_t SimpleThreadPool::shutdown(ShutdownMode mode) {
  size_t dropped = 0;
  std::deque<Task> cancelled;
  {
    std::lock_guard<std::mutex> lock(m_mutex);
    if (m_shutDown) return 0;
    m_shutDown = true;
    m_accepting = false;
    if (mode == SHUTDOWN_CANCEL) {
      cancelled.swap(m_queue);
      dropped = cancelled.size();
      m_cancelled += dropped;
      if (m_running == 0) m_idle.notify_all();
    }
    m_stopping = true;
  }
  m_notEmpty.notify_all();
  m_notFull.notify_all();
  for (std::thread& worker : m_workers) worker.join();
  // Dropped tasks are destroyed here, outside the lock, since their
  // captures may run arbitrary destructors.
  cancelled.clear();
  return dropped;
}

size_t SimpleThreadPool::takeErrors(std::vector<std::string>& out) {
  std::lock_guard<std::mutex> lock(m_mutex);
  size_t n = m_errors.size();
  for (std::string& e : m_errors) out.push_back(std::move(e));
  m_errors.clear();
  return n;
}

size_t SimpleThreadPool::completedCount() {
  std::lock_guard<std::mutex> lock(m_mutex);
  return m_completed;
}

size_t SimpleThreadPool::cancelledCount() {
  std::lock_guard<std::mutex> lock(m_mutex);
  return m_cancelled;
}

}  // namespace common
}  // namespace vortm
