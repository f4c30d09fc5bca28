// End-to-end classification with the shipped default model, through the
// exported C functions: texts per second and MB/s on one and two threads
// sharing one handle. Texts are review-sized lines of a generated mixed
// Chinese/English text, or the lines of --text=FILE.
//
//   classify_bench [--config=FILE] [--text=FILE] [benchmark flags]
#include <benchmark/benchmark.h>

#include <cstring>
#include <iostream>
#include <string>
#include <vector>

#include "BenchSupport.h"
#include "vorelin.h"

namespace {

std::string g_config = VORELIN_DEFAULT_MODEL_CONFIG;
std::string g_textFile;
void* g_handle = nullptr;
std::vector<std::string> g_lines;
size_t g_bytes = 0;

void BM_Classify(benchmark::State& state) {
  // Each thread walks the same lines from its own starting point.
  size_t i = static_cast<size_t>(state.thread_index()) * 7919;
  int64_t bytes = 0;
  for (auto _ : state) {
    const std::string& line = g_lines[i++ % g_lines.size()];
    double score = 0.0;
    Senti_Classify_Perform(g_handle, line.c_str(), &score);
    benchmark::DoNotOptimize(score);
    bytes += static_cast<int64_t>(line.size());
  }
  state.SetBytesProcessed(bytes);
  state.SetItemsProcessed(state.iterations());
}

BENCHMARK(BM_Classify)->Threads(1)->Threads(2)->UseRealTime()->MinTime(3.0);

}  // namespace

int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    if (std::strncmp(argv[i], "--config=", 9) == 0) g_config = argv[i] + 9;
    if (std::strncmp(argv[i], "--text=", 7) == 0) g_textFile = argv[i] + 7;
  }
  std::streambuf* old = std::cout.rdbuf(nullptr);  // the library's log records
  int ok = Senti_Classifier_Init(g_config.c_str(), &g_handle);
  std::cout.rdbuf(old);
  if (!ok) {
    std::cerr << "cannot initialise a classifier from " << g_config << "\n";
    return 1;
  }
  g_lines = vortm::bench::splitLines(vortm::bench::readFileOr(g_textFile, vortm::bench::mixedText(4 << 20)));
  for (const auto& l : g_lines) g_bytes += l.size();
  std::cerr << g_lines.size() << " texts, " << g_bytes / g_lines.size() << " bytes on average\n";
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  Senti_Classifier_Exit(g_handle);
  return 0;
}
