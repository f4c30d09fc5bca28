// Target-aware classification end to end (the shipped target-aware model, one
// thread, a target from a fixed list per text), and word-vector document
// vectors with 100 dimensions over the Chinese centroid vocabulary, on
// pre-tokenized texts. Throughput counts the bytes of the raw texts.
//
//   target_bench [--text=FILE] [benchmark flags]
#include <benchmark/benchmark.h>

#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include "BenchSupport.h"
#include "application/TargetAwareSentiClassifiers.h"
#include "configure/BasicParamParser.h"
#include "modular/IDocVectorBuilder.h"
#include "modular/TextAnalyzer.h"
#include "modular/Vocabulary.h"

namespace {

using vortm::common::AutoPtr;

std::vector<std::string> g_lines;
vortm::application::TargetAwareStandardSentiClassifier g_classifier;
AutoPtr<vortm::configure::Parameter> g_root;
AutoPtr<vortm::modular::IDocVectorBuilder> g_wordVec;
std::vector<std::vector<vortm::analyzer::Token> > g_tokens;
std::vector<size_t> g_bytes;

const std::vector<std::vector<std::string> > kTargets = {{"质量"}, {"物流"}, {"价格"}, {"service"}, {"服务", "quality"}};

void BM_TargetAwareClassify(benchmark::State& state) {
  size_t i = 0;
  int64_t bytes = 0;
  for (auto _ : state) {
    const std::string& line = g_lines[i % g_lines.size()];
    double score = 0.0;
    g_classifier.classifyMarkingTargets(line, kTargets[i % kTargets.size()], score);
    benchmark::DoNotOptimize(score);
    bytes += static_cast<int64_t>(line.size());
    ++i;
  }
  state.SetBytesProcessed(bytes);
}

void BM_WordVecDocVec100(benchmark::State& state) {
  size_t i = 0;
  int64_t bytes = 0;
  vortm::utility::MySparseVector<double, int> vector;
  for (auto _ : state) {
    const size_t k = i++ % g_tokens.size();
    g_wordVec->buildDocVec(g_tokens[k], vector);
    benchmark::DoNotOptimize(vector.size());
    bytes += static_cast<int64_t>(g_bytes[k]);
  }
  state.SetBytesProcessed(bytes);
}

BENCHMARK(BM_TargetAwareClassify)->UseRealTime()->MinTime(3.0);
BENCHMARK(BM_WordVecDocVec100)->UseRealTime()->MinTime(3.0);

bool parse(const std::string& xml, AutoPtr<vortm::configure::Parameter>& root) {
  vortm::configure::BasicParamParser parser;
  return parser.doParseFromText(xml, root);
}

// Random 100-dimensional vectors for every word of the centroid vocabulary,
// and the texts tokenized by the centroid model's analyzer.
bool prepareWordVec(const std::string& scratch) {
  const std::string vocabularyPath = std::string(VORELIN_CENTROID_DIR) + "/zh.vocab";
  vortm::modular::Vocabulary vocabulary;
  if (!vocabulary.loadFrom(vocabularyPath)) return false;
  std::ofstream out(scratch);
  out << vocabulary.size() << " 100\n";
  std::mt19937 random(7);
  std::uniform_real_distribution<double> uniform(-1.0, 1.0);
  for (const auto& info : vocabulary.getWordInfos()) {
    out << info.word;
    for (int j = 0; j < 100; ++j) out << ' ' << uniform(random);
    out << '\n';
  }
  out.close();
  AutoPtr<vortm::configure::Parameter> root;
  if (!parse("<b><identifier>word_vec_doc_vec_builder</identifier><param><vocabulary_file>" + vocabularyPath +
                 "</vocabulary_file><word_vec_file>" + scratch + "</word_vec_file></param></b>",
             root) ||
      !vortm::modular::IDocVectorBuilder::configDocVectorBuilder((*root)["b"], g_wordVec))
    return false;
  AutoPtr<vortm::modular::TextAnalyzer> analyzer;
  if (!vortm::modular::TextAnalyzer::configTextAnalyzer(
          (*g_root)["target_aware_classifier"]["target_aware_centroid_classifier"]["text_analyzer"], analyzer))
    return false;
  for (const std::string& line : g_lines) {
    g_tokens.emplace_back();
    analyzer->tokenizeText(line, g_tokens.back(), true);
    g_bytes.push_back(line.size());
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  std::string textFile;
  for (int i = 1; i < argc; ++i) {
    if (std::strncmp(argv[i], "--text=", 7) == 0) textFile = argv[i] + 7;
  }
  g_lines = vortm::bench::splitLines(vortm::bench::readFileOr(textFile, vortm::bench::mixedText(4 << 20)));
  const std::string scratch = "/tmp/vorelin_target_bench_" + std::to_string(getpid()) + ".vec";
  std::streambuf* old = std::cout.rdbuf(nullptr);  // the library's log records
  vortm::configure::BasicParamParser parser;
  bool ok = parser.doParse(VORELIN_TARGET_MODEL_CONFIG, g_root) && g_classifier.config((*g_root)["target_aware_classifier"]) &&
            prepareWordVec(scratch);
  std::cout.rdbuf(old);
  std::remove(scratch.c_str());
  if (!ok) {
    std::cerr << "cannot set up the target-aware model " << VORELIN_TARGET_MODEL_CONFIG << "\n";
    return 1;
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
