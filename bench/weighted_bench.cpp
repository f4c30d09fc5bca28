// The weighted model against the plain lexicon model, end to end through the
// exported C functions on one thread, on the same review-sized lines: the
// generated mixed Chinese/English text, or the lines of --text=FILE.
//
//   weighted_bench [--text=FILE] [benchmark flags]
#include <benchmark/benchmark.h>

#include <cstring>
#include <iostream>
#include <string>
#include <vector>

#include "BenchSupport.h"
#include "vorelin.h"

namespace {

void* g_plain = nullptr;
void* g_weighted = nullptr;
std::vector<std::string> g_lines;

void classifyLines(benchmark::State& state, void* handle) {
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
}

void BM_PlainLexicon(benchmark::State& state) { classifyLines(state, g_plain); }
void BM_WeightedLexicon(benchmark::State& state) { classifyLines(state, g_weighted); }

BENCHMARK(BM_PlainLexicon)->UseRealTime()->MinTime(3.0);
BENCHMARK(BM_WeightedLexicon)->UseRealTime()->MinTime(3.0);

bool open(const char* config, void*& handle) {
  std::streambuf* old = std::cout.rdbuf(nullptr);  // the library's log records
  const int ok = Senti_Classifier_Init(config, &handle);
  std::cout.rdbuf(old);
  if (!ok) std::cerr << "cannot initialise a classifier from " << config << "\n";
  return ok == 1;
}

}  // namespace

int main(int argc, char** argv) {
  std::string textFile;
  for (int i = 1; i < argc; ++i) {
    if (std::strncmp(argv[i], "--text=", 7) == 0) textFile = argv[i] + 7;
  }
  if (!open(VORELIN_DEFAULT_MODEL_CONFIG, g_plain) || !open(VORELIN_WEIGHTED_MODEL_CONFIG, g_weighted)) return 1;
  g_lines = vortm::bench::splitLines(vortm::bench::readFileOr(textFile, vortm::bench::mixedText(4 << 20)));
  size_t bytes = 0;
  for (const auto& l : g_lines) bytes += l.size();
  std::cerr << g_lines.size() << " texts, " << bytes / g_lines.size() << " bytes on average\n";
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  Senti_Classifier_Exit(g_plain);
  Senti_Classifier_Exit(g_weighted);
  return 0;
}
