// CNN classification end to end through the exported C functions, on a
// generated network of the size a real model has: 100-dimensional
// embeddings of 5000 words, 300 filters (100 each of widths 3, 4 and 5) for
// std_conv, and a dcnn of two branches over the same embeddings. Texts are
// 60 tokens each. Reports texts/s and MB/s on one thread.
//
//   cnn_bench [--config=FILE --text=FILE] [benchmark flags]
// With --config, the named configuration (a trained model) is measured on
// the lines of --text instead.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include "BenchSupport.h"
#include "vorelin.h"

namespace {

const int kWords = 5000, kDim = 100, kTokens = 60;
std::vector<std::string> g_lines;
std::string g_dir;

// Letters only: the analyzer would cut digits off as tokens of their own.
std::string word(int i) {
  std::string w = "w";
  for (; i > 0; i /= 26) w += static_cast<char>('a' + i % 26);
  return w;
}

void writeNumbers(std::ofstream& out, size_t count, std::mt19937& rng, double scale) {
  std::uniform_real_distribution<double> u(-scale, scale);
  for (size_t i = 0; i < count; ++i) out << u(rng) << (i + 1 == count ? '\n' : ' ');
}

// Word vectors, both model files and both configurations, with random weights.
void writeModels() {
  char tmpl[] = "/tmp/vorelin_cnn_bench_XXXXXX";
  g_dir = mkdtemp(tmpl);
  std::mt19937 rng(7);
  std::ofstream vec(g_dir + "/w.vec");
  vec << kWords << " " << kDim << "\n";
  for (int i = 0; i < kWords; ++i) {
    vec << word(i) << ' ';
    writeNumbers(vec, kDim, rng, 0.5);
  }
  const int features = 50, filters = 100;
  std::ofstream conv(g_dir + "/std.model");
  conv << "1 " << filters << " " << features << " 3\n3 4 5\n";
  for (int w = 3; w <= 5; ++w) writeNumbers(conv, static_cast<size_t>(filters) * w * kDim, rng, 0.05);
  writeNumbers(conv, 3 * filters, rng, 0.1);
  writeNumbers(conv, static_cast<size_t>(3) * filters * features, rng, 0.1);
  writeNumbers(conv, features, rng, 0.1);
  std::ofstream deep(g_dir + "/dcnn.model");
  deep << "5 2 " << features << " 2\n3 2 5 3\n";
  writeNumbers(deep, static_cast<size_t>(kDim) * 8, rng, 0.3);
  writeNumbers(deep, 2 * kDim, rng, 0.1);
  writeNumbers(deep, static_cast<size_t>(kDim) * 5, rng, 0.3);
  writeNumbers(deep, 2 * kDim, rng, 0.1);
  writeNumbers(deep, static_cast<size_t>(kDim) * 2 * 2 * features, rng, 0.1);
  writeNumbers(deep, features, rng, 0.1);
  std::ofstream param(g_dir + "/p.txt");
  writeNumbers(param, 2 * features + 2, rng, 1.0);
  for (const char* kind : {"std", "dcnn"}) {
    std::ofstream xml(g_dir + "/" + kind + ".xml");
    xml << "<number_senti_classifiers><classifier><identifier>cnn_senti_classifier</identifier>"
        << "<number_weight type=\"numeric\">1.0</number_weight><param><cnn_doc_vec_builder><identifier>"
        << (std::string(kind) == "std" ? "std_conv" : "dcnn") << "</identifier><param><word_vec_file>" << g_dir
        << "/w.vec</word_vec_file><model_file>" << g_dir << "/" << kind
        << ".model</model_file></param></cnn_doc_vec_builder><text_analyzer><analyzer><encode>utf-8</encode>"
        << "<tokenizers><tokenizer><identifier>basicTokenzier</identifier><param><encode>utf-8</encode></param>"
        << "</tokenizer></tokenizers></analyzer></text_analyzer><param_file>" << g_dir
        << "/p.txt</param_file></param></classifier></number_senti_classifiers>\n";
  }
}

std::vector<std::string> generatedTexts() {
  std::mt19937 rng(11);
  std::vector<std::string> out;
  for (int t = 0; t < 1000; ++t) {
    std::string text;
    for (int i = 0; i < kTokens; ++i) text += word(static_cast<int>(rng() % (kWords + 500))) + " ";
    out.push_back(text);
  }
  return out;
}

void run(benchmark::State& state, const std::string& config) {
  void* handle = nullptr;
  if (!vortm::bench::openClassifier(config, handle)) {
    state.SkipWithError(("cannot initialise " + config).c_str());
    return;
  }
  vortm::bench::classifyEach(state, handle, g_lines);
  vortm::bench::closeClassifier(handle);
}

}  // namespace

int main(int argc, char** argv) {
  std::string config, textFile;
  for (int i = 1; i < argc; ++i) {
    if (std::strncmp(argv[i], "--config=", 9) == 0) config = argv[i] + 9;
    if (std::strncmp(argv[i], "--text=", 7) == 0) textFile = argv[i] + 7;
  }
  if (config.empty()) {
    writeModels();
    g_lines = generatedTexts();
    benchmark::RegisterBenchmark("BM_CnnClassify/std_conv", run, g_dir + "/std.xml")->MinTime(3.0)->UseRealTime();
    benchmark::RegisterBenchmark("BM_CnnClassify/dcnn", run, g_dir + "/dcnn.xml")->MinTime(3.0)->UseRealTime();
  } else {
    g_lines = vortm::bench::splitLines(vortm::bench::readFileOr(textFile, vortm::bench::mixedText(1 << 20)));
    benchmark::RegisterBenchmark("BM_CnnClassify/config", run, config)->MinTime(3.0)->UseRealTime();
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  if (!g_dir.empty() && std::system(("rm -rf '" + g_dir + "'").c_str()) != 0) return 1;
  return 0;
}
