// Training-side costs of the centroid model: vocabulary building, the whole
// training of a centroid (vocabulary, document vectors, estimator) on
// tokenized texts, and loading a vocabulary of 100,000 words.
//
//   centroid_bench [--corpus=LABELLED.tsv] [--config=CENTROID.xml] [flags]
//
// --corpus takes 'LABEL<TAB>TEXT' lines (1 positive, anything else negative),
// for example the Chinese training lines of models/scripts/corpus.py; without
// it a generated text with alternating labels is used.
#include <benchmark/benchmark.h>

#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "BenchSupport.h"
#include "application/CentroidTrainer.h"
#include "configure/BasicParamParser.h"
#include "modular/TextAnalyzer.h"
#include "modular/Vocabulary.h"

namespace {

using vortm::analyzer::Token;

std::string g_corpus;
std::string g_config = VORELIN_CENTROID_CONFIG;
std::vector<int> g_labels;
std::vector<std::vector<Token> > g_docs;
std::string g_scratch;

bool loadCorpus(std::vector<std::string>& texts) {
  if (g_corpus.empty()) {
    std::vector<std::string> lines = vortm::bench::splitLines(vortm::bench::mixedText(4 << 20));
    for (size_t i = 0; i < lines.size(); ++i) {
      g_labels.push_back(static_cast<int>(i % 2));
      texts.push_back(lines[i]);
    }
    return true;
  }
  std::ifstream in(g_corpus);
  std::string line;
  while (std::getline(in, line)) {
    size_t tab = line.find('\t');
    if (tab == std::string::npos) continue;
    g_labels.push_back(line.compare(0, tab, "1") == 0 ? 1 : 0);
    texts.push_back(line.substr(tab + 1));
  }
  return !texts.empty();
}

bool tokenizeCorpus() {
  std::vector<std::string> texts;
  if (!loadCorpus(texts)) return false;
  std::ifstream in(g_config);
  std::string xml((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  size_t begin = xml.find("<text_analyzer>");
  size_t end = xml.find("</text_analyzer>");
  if (begin == std::string::npos || end == std::string::npos) return false;
  vortm::common::AutoPtr<vortm::configure::Parameter> root;
  vortm::configure::BasicParamParser parser;
  vortm::modular::TextAnalyzer analyzer;
  if (!parser.doParseFromText(xml.substr(begin, end + 16 - begin), root) ||
      !analyzer.config((*root)["text_analyzer"])) {
    return false;
  }
  vortm::application::CentroidTrainer trainer{vortm::application::CentroidTrainOptions()};
  size_t failed = 0;
  return trainer.tokenize(analyzer, texts, g_docs, failed);
}

void BM_VocabularyBuild(benchmark::State& state) {
  for (auto _ : state) {
    vortm::modular::Vocabulary vocabulary;
    std::unordered_map<std::string, unsigned int> ids;
    for (auto& doc : g_docs) vocabulary.addDocument(doc, nullptr, ids);
    vocabulary.sortByDf();
    benchmark::DoNotOptimize(vocabulary.size());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(g_docs.size()));
}

void BM_CentroidTrain(benchmark::State& state) {
  vortm::application::CentroidTrainOptions options;
  options.c = 8.0;
  options.minDf = 3;
  options.maxSize = 40000;
  vortm::application::CentroidTrainer trainer(options);
  std::string error;
  for (auto _ : state) {
    if (!trainer.train(g_labels, g_docs, std::vector<size_t>(), g_scratch + ".vocab", g_scratch + ".centroid", error)) {
      state.SkipWithError(error.c_str());
      break;
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(g_docs.size()));
}

void BM_VocabularyLoad100K(benchmark::State& state) {
  std::string path = g_scratch + ".100k.vocab";
  {
    vortm::modular::Vocabulary vocabulary;
    vocabulary.setDocCount(1000000);
    for (int i = 0; i < 100000; ++i) vocabulary.addUserWord("w" + std::to_string(i), 100 + i % 1000, 200 + i);
    if (!vocabulary.writeTo(path)) {
      state.SkipWithError("cannot write the vocabulary");
      return;
    }
  }
  for (auto _ : state) {
    vortm::modular::Vocabulary vocabulary;
    if (!vocabulary.loadFrom(path) || vocabulary.size() != 100000) {
      state.SkipWithError("cannot load the vocabulary");
      break;
    }
  }
  std::remove(path.c_str());
}

BENCHMARK(BM_VocabularyBuild)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_CentroidTrain)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_VocabularyLoad100K)->Unit(benchmark::kMillisecond)->MinTime(2.0);

}  // namespace

int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    if (std::strncmp(argv[i], "--corpus=", 9) == 0) g_corpus = argv[i] + 9;
    if (std::strncmp(argv[i], "--config=", 9) == 0) g_config = argv[i] + 9;
  }
  g_scratch = "/tmp/vorelin_centroid_bench_" + std::to_string(getpid());
  std::streambuf* old = std::cout.rdbuf(nullptr);  // the library's messages
  bool ok = tokenizeCorpus();
  std::cout.rdbuf(old);
  if (!ok) {
    std::cerr << "cannot read the corpus or the analyzer of " << g_config << "\n";
    return 1;
  }
  std::cerr << g_docs.size() << " texts\n";
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  std::remove((g_scratch + ".vocab").c_str());
  std::remove((g_scratch + ".centroid").c_str());
  return 0;
}
