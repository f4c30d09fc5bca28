#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "TestSupport.h"
#include "common/thread/SimpleThreadPool.h"

using namespace vortm::common;

namespace {

// Every accepted task runs exactly once, with many producers racing a small
// queue; a full queue makes trySubmit fail instead of waiting.
TEST(ThreadPoolTest, EveryAcceptedTaskRunsOnceUnderBackPressure) {
  constexpr int kProducers = 4, kTasks = 500;
  std::vector<std::atomic<int>> runs(kProducers * kTasks);
  for (auto& r : runs) r = 0;
  {
    SimpleThreadPool pool(3, 2);
    vortm::testing::onThreads(kProducers, [&](int p) {
      for (int i = 0; i < kTasks; ++i) ASSERT_TRUE(pool.submit([&runs, p, i] { ++runs[p * 500 + i]; }));
    });
    pool.waitIdle();
    EXPECT_EQ(static_cast<size_t>(kProducers * kTasks), pool.completedCount());
  }
  for (size_t i = 0; i < runs.size(); ++i) ASSERT_EQ(1, runs[i].load()) << "task " << i;

  // Block the only worker, fill the queue: the next trySubmit is refused.
  SimpleThreadPool pool(1, 2);
  std::atomic<bool> release(false), started(false);
  ASSERT_TRUE(pool.submit([&] {
    started = true;
    while (!release) std::this_thread::yield();
  }));
  while (!started) std::this_thread::yield();
  EXPECT_TRUE(pool.trySubmit([] {}));
  EXPECT_TRUE(pool.trySubmit([] {}));
  EXPECT_FALSE(pool.trySubmit([] {}));
  EXPECT_FALSE(pool.submit(IThreadPool::Task()));
  release = true;
  pool.waitIdle();
  EXPECT_EQ(3u, pool.completedCount());
}

// Shutdown under load: FINISH runs the whole queue, CANCEL drops what has
// not started, and either way no task runs twice and none runs afterwards.
TEST(ThreadPoolTest, ShutdownFinishesOrCancelsQueuedTasks) {
  for (int mode = 0; mode < 2; ++mode) {
    std::atomic<int> ran(0);
    std::atomic<bool> release(false);
    SimpleThreadPool pool(2, 64);
    for (int i = 0; i < 2; ++i)
      ASSERT_TRUE(pool.submit([&] {
        while (!release) std::this_thread::yield();
        ++ran;
      }));
    for (int i = 0; i < 50; ++i) ASSERT_TRUE(pool.submit([&] { ++ran; }));
    // Hold the tasks until shutdown has taken its decision on the queue.
    std::thread releaser([&] {
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
      release = true;
    });
    size_t dropped = pool.shutdown(mode == 0 ? IThreadPool::SHUTDOWN_FINISH : IThreadPool::SHUTDOWN_CANCEL);
    releaser.join();
    EXPECT_EQ(52, ran.load() + static_cast<int>(dropped)) << "mode " << mode;
    EXPECT_EQ(pool.completedCount() + pool.cancelledCount(), 52u);
    if (mode == 0) {
      EXPECT_EQ(0u, dropped);
    } else {
      EXPECT_GE(dropped, 48u);  // at most the two blocked tasks and two more had started
    }
    EXPECT_FALSE(pool.submit([&] { ++ran; }));
    EXPECT_EQ(0u, pool.shutdown(IThreadPool::SHUTDOWN_CANCEL));
    EXPECT_EQ(52, ran.load() + static_cast<int>(dropped));
  }

  // A producer blocked on a full queue is released by shutdown, refused.
  SimpleThreadPool pool(1, 1);
  std::atomic<bool> release(false);
  ASSERT_TRUE(pool.submit([&] {
    while (!release) std::this_thread::yield();
  }));
  std::atomic<int> refused(0);
  std::thread producer([&] {
    for (int i = 0; i < 10; ++i)
      if (!pool.submit([] {})) ++refused;
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  std::thread stopper([&] { pool.shutdown(IThreadPool::SHUTDOWN_CANCEL); });
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  release = true;
  producer.join();
  stopper.join();
  EXPECT_GE(refused.load(), 8);
}

// A throwing task is reported, with its text, and the worker goes on.
TEST(ThreadPoolTest, ExceptionsInTasksAreReportedNotLost) {
  vortm::testing::StdoutCapture capture;
  std::atomic<int> ran(0);
  auto held = std::make_shared<int>(1);
  std::weak_ptr<int> watch = held;
  {
    SimpleThreadPool pool(1, 8);
    pool.submit([] { throw std::runtime_error("bad document 7"); });
    pool.submit([] { throw 42; });
    pool.submit([&ran, held] { ++ran; });
    held.reset();
    pool.waitIdle();
    // The task's captures are gone once waitIdle returns.
    EXPECT_TRUE(watch.expired());
    EXPECT_EQ(1, ran.load());
    std::vector<std::string> errors{"older"};
    EXPECT_EQ(2u, pool.takeErrors(errors));
    EXPECT_EQ((std::vector<std::string>{"older", "bad document 7", "unknown exception"}), errors);
    EXPECT_EQ(0u, pool.takeErrors(errors));
    EXPECT_EQ(3u, pool.completedCount());
  }
  auto lines = capture.lines();
  ASSERT_EQ(2u, lines.size());
  EXPECT_TRUE(vortm::testing::isLogRecord(lines[0], "Error", "301", "Task Failed in Thread Pool: bad document 7"));
}

}  // namespace
