// End-to-end classification with the shipped default model, through the
// exported C functions: texts per second and MB/s on one and two threads
// sharing one handle. Texts are review-sized lines of a generated mixed
// Chinese/English text, or the lines of --text=FILE.
//
//   classify_bench [--config=FILE] [--text=FILE] [benchmark flags]
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "BenchSupport.h"

namespace {

void* g_handle = nullptr;
std::vector<std::string> g_lines;

void BM_Classify(benchmark::State& state) {
  // Each thread walks the same lines from its own starting point.
  vortm::bench::classifyEach(state, g_handle, g_lines, static_cast<size_t>(state.thread_index()) * 7919);
}

BENCHMARK(BM_Classify)->Threads(1)->Threads(2)->UseRealTime()->MinTime(3.0);

}  // namespace

int main(int argc, char** argv) {
  if (!vortm::bench::openClassifier(vortm::bench::flagValue(argc, argv, "--config=", VORELIN_DEFAULT_MODEL_CONFIG),
                                    g_handle))
    return 1;
  g_lines = vortm::bench::benchLines(vortm::bench::flagValue(argc, argv, "--text="));
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  Senti_Classifier_Exit(g_handle);
  return 0;
}
