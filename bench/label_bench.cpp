// The label scorer end to end on review text, through the exported C
// functions on one thread, beside the plain lexicon classifier of the
// default model in the same run: the label classifier alone, and the label
// model that runs both. Throughput is per CPU second of the benchmark
// thread, so that a busy machine does not distort the per-core figure.
//
//   label_bench [--text=FILE] [benchmark flags]
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "BenchSupport.h"

namespace {

std::vector<std::string> g_lines;

void classifyLines(benchmark::State& state, const std::string& config) {
  void* handle = nullptr;
  if (!vortm::bench::openClassifier(config, handle)) {
    state.SkipWithError(("cannot initialise a classifier from " + config).c_str());
    return;
  }
  vortm::bench::classifyEach(state, handle, g_lines);
  vortm::bench::closeClassifier(handle);
}

void BM_PlainLexicon(benchmark::State& state) { classifyLines(state, VORELIN_DEFAULT_MODEL_CONFIG); }
void BM_LabelScorer(benchmark::State& state) { classifyLines(state, VORELIN_LABEL_DIR "/labels_only_utf8.xml"); }
void BM_DefaultPlusLabels(benchmark::State& state) { classifyLines(state, VORELIN_LABEL_DIR "/labels_utf8.xml"); }

BENCHMARK(BM_PlainLexicon)->MinTime(3.0);
BENCHMARK(BM_LabelScorer)->MinTime(3.0);
BENCHMARK(BM_DefaultPlusLabels)->MinTime(3.0);

}  // namespace

int main(int argc, char** argv) {
  g_lines = vortm::bench::benchLines(vortm::bench::flagValue(argc, argv, "--text="));
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
