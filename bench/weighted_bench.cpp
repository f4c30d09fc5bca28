// The weighted model against the plain lexicon model, end to end through the
// exported C functions on one thread, on the same review-sized lines: the
// generated mixed Chinese/English text, or the lines of --text=FILE.
//
//   weighted_bench [--text=FILE] [benchmark flags]
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "BenchSupport.h"

namespace {

void* g_plain = nullptr;
void* g_weighted = nullptr;
std::vector<std::string> g_lines;

void BM_PlainLexicon(benchmark::State& state) { vortm::bench::classifyEach(state, g_plain, g_lines); }
void BM_WeightedLexicon(benchmark::State& state) { vortm::bench::classifyEach(state, g_weighted, g_lines); }

BENCHMARK(BM_PlainLexicon)->UseRealTime()->MinTime(3.0);
BENCHMARK(BM_WeightedLexicon)->UseRealTime()->MinTime(3.0);

}  // namespace

int main(int argc, char** argv) {
  if (!vortm::bench::openClassifier(VORELIN_DEFAULT_MODEL_CONFIG, g_plain) ||
      !vortm::bench::openClassifier(VORELIN_WEIGHTED_MODEL_CONFIG, g_weighted))
    return 1;
  g_lines = vortm::bench::benchLines(vortm::bench::flagValue(argc, argv, "--text="));
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  Senti_Classifier_Exit(g_plain);
  Senti_Classifier_Exit(g_weighted);
  return 0;
}
