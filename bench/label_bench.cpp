// The label scorer end to end on review text, through the exported C
// functions on one thread, beside the plain lexicon classifier of the
// default model in the same run: the label classifier alone, and the label
// model that runs both. Throughput is per CPU second of the benchmark
// thread, so that a busy machine does not distort the per-core figure.
//
//   label_bench [--text=FILE] [benchmark flags]
#include <benchmark/benchmark.h>

#include <cstring>
#include <iostream>
#include <string>
#include <vector>

#include "BenchSupport.h"
#include "vorelin.h"

namespace {

std::vector<std::string> g_lines;

void classifyLines(benchmark::State& state, const std::string& config) {
  void* handle = nullptr;
  std::streambuf* old = std::cout.rdbuf(nullptr);  // the library's log records
  const int ok = Senti_Classifier_Init(config.c_str(), &handle);
  std::cout.rdbuf(old);
  if (!ok) {
    state.SkipWithError(("cannot initialise a classifier from " + config).c_str());
    return;
  }
  size_t i = 0;
  int64_t bytes = 0;
  for (auto _ : state) {
    const std::string& line = g_lines[i++ % g_lines.size()];
    double score = 0.0;
    Senti_Classify_Perform(handle, line.c_str(), &score);
    benchmark::DoNotOptimize(score);
    bytes += static_cast<int64_t>(line.size());
  }
  state.SetBytesProcessed(bytes);
  state.SetItemsProcessed(state.iterations());
  old = std::cout.rdbuf(nullptr);
  Senti_Classifier_Exit(handle);
  std::cout.rdbuf(old);
}

void BM_PlainLexicon(benchmark::State& state) { classifyLines(state, VORELIN_DEFAULT_MODEL_CONFIG); }
void BM_LabelScorer(benchmark::State& state) { classifyLines(state, VORELIN_LABEL_DIR "/labels_only_utf8.xml"); }
void BM_DefaultPlusLabels(benchmark::State& state) { classifyLines(state, VORELIN_LABEL_DIR "/labels_utf8.xml"); }

BENCHMARK(BM_PlainLexicon)->MinTime(3.0);
BENCHMARK(BM_LabelScorer)->MinTime(3.0);
BENCHMARK(BM_DefaultPlusLabels)->MinTime(3.0);

}  // namespace

int main(int argc, char** argv) {
  std::string textFile;
  for (int i = 1; i < argc; ++i)
    if (std::strncmp(argv[i], "--text=", 7) == 0) textFile = argv[i] + 7;
  g_lines = vortm::bench::splitLines(vortm::bench::readFileOr(textFile, vortm::bench::mixedText(4 << 20)));
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
