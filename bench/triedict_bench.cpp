// Trie dictionary at the size of a real Chinese word list: jieba's dict.txt
// (about 349K words, "word frequency tag" lines) is inserted and saved once;
// the benchmarks then measure loading the saved file, maximum forward match
// over 4 MB of generated text, and the same text through the tokenizer with
// its lexer pass.
//
// Memory: BM_LoadDict runs this program again as a child that only loads the
// saved file (--load-only=FILE) and reports the child's peak resident set, so
// that the figure is the dictionary's and not the benchmark's texts'.
// peak_rss_MB in the other rows is this process's own high-water mark.
//
//   triedict_bench [--dict=/path/to/dict.txt] [benchmark flags]
#include <benchmark/benchmark.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "analyzer/CharacterLexer.h"
#include "analyzer/TokenBuffer.h"
#include "analyzer/TrieDict.h"
#include "analyzer/TrieDictMaxForwardTokenizer.h"
#include "common/AutoPtr.h"
#include "common/InstanceCreator.h"

using namespace vortm::analyzer;
using vortm::common::AutoPtr;
using vortm::common::InstanceCreator;

namespace {

typedef TrieDict<unsigned int> Utf8Dict;

std::string g_dictPath = "/usr/lib/python3/dist-packages/jieba/dict.txt";
const size_t kTextBytes = 4 << 20;

// A value from /proc/self/status, in kB.
long procStatusKB(const char* key) {
  std::ifstream in("/proc/self/status");
  std::string line;
  size_t n = std::strlen(key);
  while (std::getline(in, line))
    if (line.compare(0, n, key) == 0 && line.size() > n && line[n] == ':') return std::atol(line.c_str() + n + 1);
  return -1;
}

double seconds(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

struct WordList {
  std::vector<std::string> words;
  std::vector<uint64_t> frequencies;
};

WordList readWordList() {
  WordList list;
  std::ifstream in(g_dictPath);
  if (!in) {
    std::cerr << "cannot read " << g_dictPath << "\n";
    std::exit(1);
  }
  std::string line;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    size_t blank = line.find(' ');
    std::string word = line.substr(0, blank);
    if (word.empty()) continue;
    uint64_t frequency = blank == std::string::npos ? 1 : std::strtoull(line.c_str() + blank + 1, nullptr, 10);
    list.words.push_back(word);
    list.frequencies.push_back(frequency ? frequency : 1);
  }
  return list;
}

// The saved dictionary, made once by insert and saveTo.
struct SavedDict {
  std::string file;
  size_t words = 0;
  double insertSeconds = 0;
  long bytes = 0;
};

const SavedDict& savedDict() {
  static SavedDict saved = [] {
    SavedDict s;
    WordList list = readWordList();
    s.words = list.words.size();
    s.file = "/tmp/vorelin_triedict_bench_" + std::to_string(getpid()) + ".dict";
    Utf8Dict dict("basicUTF8Lexer");
    auto start = std::chrono::steady_clock::now();
    for (const std::string& w : list.words) dict.insert(w, 0x0206);
    s.insertSeconds = seconds(start);
    if (!dict.saveTo(s.file)) {
      std::cerr << "cannot save " << s.file << "\n";
      std::exit(1);
    }
    struct stat st;
    if (stat(s.file.c_str(), &st) == 0) s.bytes = st.st_size;
    return s;
  }();
  return saved;
}

// 4 MB of words from the list with punctuation, some ASCII and digits, cut
// into documents of 60 words and lexed once, as Tokenizer::doLexer would, so
// that the match benchmarks time the dictionary alone.
struct Text {
  std::string bytes;  // documents separated by '\n'
  std::vector<std::pair<unsigned int, unsigned int> > docs;  // offset, length
  std::vector<unsigned int> forwardRefs;                      // one per byte
};

// Words are drawn with probability proportional to `weights`; a fixed LCG
// keeps the text the same from run to run.
void generateText(const std::vector<std::string>& words, const std::vector<uint64_t>& weights, Text& t) {
  static const char* punct[] = {"，", "。", "！", "？", "、", "；", "：", "“", "”"};
  static const char* ascii[] = {"iPhone", "2024", "ok", "3.5", "CPU"};
  std::vector<uint64_t> cumulative(weights.size());
  uint64_t sum = 0;
  for (size_t i = 0; i < weights.size(); ++i) cumulative[i] = sum += weights[i];
  uint64_t x = 20261112;
  auto next = [&x]() {
    x = x * 6364136223846793005ULL + 1442695040888963407ULL;
    return x >> 11;
  };
  int inLine = 0;
  size_t lineStart = 0;
  while (t.bytes.size() < kTextBytes) {
    uint64_t r = next() % sum;
    t.bytes += words[std::upper_bound(cumulative.begin(), cumulative.end(), r) - cumulative.begin()];
    uint64_t p = next() % 100;
    if (p < 12)
      t.bytes += punct[next() % 9];
    else if (p < 14)
      t.bytes += ascii[next() % 5];
    if (++inLine == 60) {
      t.docs.push_back(std::make_pair(lineStart, t.bytes.size() - lineStart));
      t.bytes += '\n';
      lineStart = t.bytes.size();
      inLine = 0;
    }
  }
  if (lineStart < t.bytes.size()) t.docs.push_back(std::make_pair(lineStart, t.bytes.size() - lineStart));

  t.forwardRefs.assign(t.bytes.size(), 1);
  AutoPtr<CharacterLexer> lexer(InstanceCreator<CharacterLexer>::getCreation("basicUTF8Lexer"), true);
  lexer->setText(t.bytes);
  unsigned int offset, length;
  while (lexer->doLexer(offset, length) == 1) t.forwardRefs[offset] = length;
}

struct Texts {
  Text weighted;  // by the list's frequencies, as in running text
  Text uniform;   // every word of the list equally likely: the cold case
  // The 5,000 most frequent words, which fit in the caches.
  std::vector<std::string> topWords;
};

Texts& texts() {
  static Texts* t = [] {
    Texts* t = new Texts();
    WordList list = readWordList();
    generateText(list.words, list.frequencies, t->weighted);
    generateText(list.words, std::vector<uint64_t>(list.words.size(), 1), t->uniform);
    std::vector<size_t> order(list.words.size());
    for (size_t i = 0; i < order.size(); ++i) order[i] = i;
    std::partial_sort(order.begin(), order.begin() + 5000, order.end(),
                      [&](size_t a, size_t b) { return list.frequencies[a] > list.frequencies[b]; });
    for (size_t i = 0; i < 5000; ++i) t->topWords.push_back(list.words[order[i]]);
    return t;
  }();
  return *t;
}

// The dictionary that the match benchmarks share, loaded on first use.
Utf8Dict& loadedDict() {
  static Utf8Dict* dict = [] {
    Utf8Dict* d = new Utf8Dict("basicUTF8Lexer");
    if (!d->loadFrom(savedDict().file)) std::exit(1);
    return d;
  }();
  return *dict;
}

void reportMemory(benchmark::State& state) { state.counters["peak_rss_MB"] = procStatusKB("VmHWM") / 1024.0; }

void BM_LoadDict(benchmark::State& state) {
  const SavedDict& saved = savedDict();
  for (auto _ : state) {
    std::unique_ptr<Utf8Dict> dict(new Utf8Dict("basicUTF8Lexer"));
    if (!dict->loadFrom(saved.file)) state.SkipWithError("load failed");
    state.PauseTiming();
    dict.reset();
    state.ResumeTiming();
  }
  state.counters["words"] = static_cast<double>(saved.words);
  state.counters["file_MB"] = saved.bytes / 1048576.0;
  state.counters["insert_all_s"] = saved.insertSeconds;

  // A fresh process that only loads: its high-water mark is the
  // dictionary's cost, with the runtime's few MB on top.
  char self[4096];
  ssize_t n = readlink("/proc/self/exe", self, sizeof(self) - 1);
  self[n > 0 ? n : 0] = '\0';
  std::string command = std::string(self) + " --load-only=" + saved.file;
  FILE* child = popen(command.c_str(), "r");
  long peakKB = -1, rssKB = -1, emptyKB = -1;
  if (child) {
    if (std::fscanf(child, "%ld %ld %ld", &emptyKB, &rssKB, &peakKB) != 3) peakKB = -1;
    pclose(child);
  }
  state.counters["load_only_peak_rss_MB"] = peakKB / 1024.0;
  state.counters["load_only_rss_MB"] = rssKB / 1024.0;
  state.counters["load_only_rss_before_MB"] = emptyKB / 1024.0;
}

void matchText(benchmark::State& state, Utf8Dict& dict, Text& t) {
  TokenBuffer out;
  for (auto _ : state) {
    for (const auto& doc : t.docs) {
      out.reset();
      dict.match(t.bytes.data() + doc.first, doc.second, t.forwardRefs.data() + doc.first, out, doc.first);
    }
    benchmark::DoNotOptimize(out.getWriteOffset());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(t.bytes.size()));
  reportMemory(state);
}

void BM_Match(benchmark::State& state) { matchText(state, loadedDict(), texts().weighted); }
void BM_MatchUniformWords(benchmark::State& state) { matchText(state, loadedDict(), texts().uniform); }

// The same text against a dictionary small enough to stay in the caches:
// how fast the match runs when memory latency is out of the picture.
void BM_MatchTop5000Dict(benchmark::State& state) {
  Utf8Dict small("basicUTF8Lexer");
  for (const std::string& w : texts().topWords) small.insert(w, 0x0206);
  matchText(state, small, texts().weighted);
}

void BM_TokenizerDoTokenize(benchmark::State& state) {
  const Text& t = texts().weighted;
  TrieDictMaxForwardTokenizer tokenizer(AutoPtr<Dict>(&loadedDict(), false));
  std::map<std::string, std::string> param = {{"encode", "utf-8"}};
  if (!tokenizer.config(param)) state.SkipWithError("config failed");
  std::vector<std::string> docs;
  for (const auto& doc : t.docs) docs.push_back(t.bytes.substr(doc.first, doc.second));
  for (auto _ : state) {
    for (const std::string& doc : docs) {
      TokenBuffer out;
      tokenizer.doTokenize(doc, out, false, 0);
      benchmark::DoNotOptimize(out.getWriteOffset());
    }
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(t.bytes.size()));
  reportMemory(state);
}

BENCHMARK(BM_LoadDict)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_Match)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_MatchUniformWords)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_MatchTop5000Dict)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_TokenizerDoTokenize)->Unit(benchmark::kMillisecond)->MinTime(2.0);

// Child mode: load one saved file, print VmRSS before, VmRSS after and VmHWM.
int loadOnly(const std::string& file) {
  long before = procStatusKB("VmRSS");
  Utf8Dict dict("basicUTF8Lexer");
  if (!dict.loadFrom(file)) return 1;
  std::printf("%ld %ld %ld\n", before, procStatusKB("VmRSS"), procStatusKB("VmHWM"));
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (arg.compare(0, 12, "--load-only=") == 0) return loadOnly(arg.substr(12));
  }
  benchmark::Initialize(&argc, argv);
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (arg.compare(0, 7, "--dict=") == 0) g_dictPath = arg.substr(7);
  }
  benchmark::RunSpecifiedBenchmarks();
  std::remove(savedDict().file.c_str());
  return 0;
}
