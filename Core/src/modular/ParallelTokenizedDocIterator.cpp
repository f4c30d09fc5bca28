#include "modular/ParallelTokenizedDocIterator.h"

#include <utility>

#include "modular/StandardTokenizedDocIterator.h"

namespace vortm {
namespace modular {

using trainset::TokenizedDoc;

ParallelTokenizedDocIterator::ParallelTokenizedDocIterator(common::AutoPtr<trainset::DocReader> reader,
                                                           common::AutoPtr<TextAnalyzer> analyzer,
                                                           common::IThreadPool& pool,
                                                           common::AutoPtr<trainset::TokenizedDocFilter> workerFilter,
                                                           size_t batchSize)
    : m_readerPtr(reader),
      m_analyzerPtr(analyzer),
      m_pool(pool),
      m_workerFilterPtr(workerFilter),
      m_batchSize(batchSize ? batchSize : 1),
      m_windowSize(2 * static_cast<size_t>(pool.threadCount()) + 1),
      m_readerDone(!reader || !analyzer),
      m_position(0),
      m_read(0),
      m_failed(0),
      m_dropped(0),
      m_error(false) {}

ParallelTokenizedDocIterator::~ParallelTokenizedDocIterator() { waitForAll(); }

void ParallelTokenizedDocIterator::waitForAll() {
  std::unique_lock<std::mutex> lock(m_mutex);
  for (const std::shared_ptr<Batch>& batch : m_window) {
    Batch* b = batch.get();
    m_batchDone.wait(lock, [b] { return b->done; });
  }
}

void ParallelTokenizedDocIterator::runBatch(Batch& batch) {
  // Workers share the analyzer and filter through raw pointers: the counts
  // of AutoPtr copies are not thread-safe.
  TextAnalyzer* analyzer = m_analyzerPtr.get();
  trainset::TokenizedDocFilter* filter = m_workerFilterPtr.get();
  batch.out.reserve(batch.docs.size());
  for (const trainset::Doc& doc : batch.docs) {
    TokenizedDoc tokenized;
    if (!StandardTokenizedDocIterator::tokenizeDoc(*analyzer, doc, tokenized)) {
      ++batch.failed;
      continue;
    }
    if (filter && filter->filter(tokenized)) {
      ++batch.dropped;
      continue;
    }
    batch.out.push_back(std::move(tokenized));
  }
  batch.docs.clear();
}

void ParallelTokenizedDocIterator::finishBatch(Batch& batch, bool error) {
  std::lock_guard<std::mutex> lock(m_mutex);
  batch.error = error;
  batch.done = true;
  m_batchDone.notify_all();
}

void ParallelTokenizedDocIterator::fillWindow() {
  while (!m_readerDone && m_window.size() < m_windowSize) {
    std::shared_ptr<Batch> batch = std::make_shared<Batch>();
    trainset::DocReader* reader = m_readerPtr.get();
    while (batch->docs.size() < m_batchSize) {
      if (!reader->hasNextDoc()) {
        m_readerDone = true;
        break;
      }
      batch->docs.emplace_back();
      reader->getNextDoc(batch->docs.back());
    }
    if (batch->docs.empty()) break;
    {
      std::lock_guard<std::mutex> lock(m_mutex);
      m_window.push_back(batch);
    }
    Batch* b = batch.get();
    bool queued = m_pool.submit([this, b] {
      try {
        runBatch(*b);
      } catch (...) {
        finishBatch(*b, true);
        throw;  // the pool reports it
      }
      finishBatch(*b, false);
    });
    // A pool that no longer takes tasks leaves the work to this thread.
    if (!queued) {
      runBatch(*b);
      finishBatch(*b, false);
    }
  }
}

bool ParallelTokenizedDocIterator::hasNextInternal() {
  for (;;) {
    fillWindow();
    std::shared_ptr<Batch> front;
    {
      std::unique_lock<std::mutex> lock(m_mutex);
      if (m_window.empty()) return false;
      front = m_window.front();
      Batch* b = front.get();
      m_batchDone.wait(lock, [b] { return b->done; });
    }
    if (m_position == 0) {
      m_read += front->out.size() + front->failed + front->dropped;
      m_failed += front->failed;
      m_dropped += front->dropped;
      if (front->error) m_error = true;
    }
    if (m_position < front->out.size()) {
      m_current = std::move(front->out[m_position++]);
      return true;
    }
    std::lock_guard<std::mutex> lock(m_mutex);
    m_window.pop_front();
    m_position = 0;
  }
}

}  // namespace modular
}  // namespace vortm
