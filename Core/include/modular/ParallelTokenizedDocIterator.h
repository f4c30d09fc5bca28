#ifndef VORTM_MODULAR_PARALLELTOKENIZEDDOCITERATOR_H
#define VORTM_MODULAR_PARALLELTOKENIZEDDOCITERATOR_H

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <vector>

#include "common/AutoPtr.h"
#include "common/thread/IThreadPool.h"
#include "modular/TextAnalyzer.h"
#include "trainset/DocReader.h"
#include "trainset/TokenizedDoc.h"

namespace vortm {
namespace modular {

// StandardTokenizedDocIterator with the tokenizing and the filter run by a
// thread pool. The calling thread reads documents in batches and hands them
// to the pool, keeping a few batches in flight; documents come out in the
// order read, exactly as the one-thread iterator gives them. The analyzer
// and the worker filter are shared by the pool's threads, so both must be
// safe to call from many threads at once (the library's analyzers and the
// lexicon filter are). A filter set with setFilter() still runs on the
// calling thread, after the worker filter.
class ParallelTokenizedDocIterator : public trainset::TokenizedDocIterator {
 public:
  ParallelTokenizedDocIterator(common::AutoPtr<trainset::DocReader> reader, common::AutoPtr<TextAnalyzer> analyzer,
                               common::IThreadPool& pool,
                               common::AutoPtr<trainset::TokenizedDocFilter> workerFilter =
                                   common::AutoPtr<trainset::TokenizedDocFilter>(),
                               size_t batchSize = 64);
  // Waits for the batches still in the pool.
  ~ParallelTokenizedDocIterator() override;

  // Documents read, refused by the analyzer, and dropped by the worker
  // filter, among the batches delivered so far.
  size_t readCount() const { return m_read; }
  size_t failedCount() const { return m_failed; }
  size_t droppedCount() const { return m_dropped; }
  // True once a batch's task has thrown; its documents are then lost, and
  // the pool holds the exception's text.
  bool hadError() const { return m_error; }

 protected:
  bool hasNextInternal() override;

 private:
  struct Batch {
    Batch() : done(false), failed(0), dropped(0), error(false) {}
    std::vector<trainset::Doc> docs;
    std::vector<trainset::TokenizedDoc> out;
    bool done;
    size_t failed;
    size_t dropped;
    bool error;
  };

  void runBatch(Batch& batch);
  void finishBatch(Batch& batch, bool error);
  // Reads and submits batches until the window is full or the reader ends.
  void fillWindow();
  void waitForAll();

  common::AutoPtr<trainset::DocReader> m_readerPtr;
  common::AutoPtr<TextAnalyzer> m_analyzerPtr;
  common::IThreadPool& m_pool;
  common::AutoPtr<trainset::TokenizedDocFilter> m_workerFilterPtr;
  size_t m_batchSize;
  size_t m_windowSize;
  bool m_readerDone;

  std::mutex m_mutex;
  std::condition_variable m_batchDone;
  std::deque<std::shared_ptr<Batch> > m_window;
  size_t m_position;

  size_t m_read;
  size_t m_failed;
  size_t m_dropped;
  bool m_error;
};

}  // namespace modular
}  // namespace vortm

#endif
