// Our segmenters side by side with cppjieba's, on the same dictionary
// (jieba.dict.utf8, about 349K words) and the same text (weicheng.utf8),
// both taken from the npm package nodejieba that bench/CMakeLists.txt fetches
// into the build tree at configure time. Nothing of that package is part of
// the library or the tools; without it this program says so and exits.
//
// Pairs: our maximum forward match (TrieDict) against MPSegment, our complex
// maximum match (ComplexMatchTrieDict) against MixSegment. Each side decodes
// the characters of every line itself (our lexer fills the character
// lengths) and reads its tokens back.
//
// Our dictionaries are made as they are deployed: the word list is inserted
// and saved once, and the tokenizers load the saved file. The start-up report
// gives, for each side, the time to load its dictionary, the resident memory
// the loaded dictionary keeps and the peak the load reached on the way; the
// time to insert the word list is given beside ours.
//
//   cppjieba_compare_bench [benchmark flags]
//       MB/s of each segmenter under Google Benchmark.
//   cppjieba_compare_bench --passes=N [--only=forward|complex|mp|mix]
//       N passes over the text with each segmenter (or the one named), with
//       the thread's CPU time of each; under callgrind with --only, the
//       instruction count of that segmenter alone.
#include <cstdio>

#ifndef VORELIN_CPPJIEBA_DIR

int main() {
  std::printf("cppjieba comparison skipped: the npm package nodejieba 3.5.8 was not available at configure time\n");
  return 0;
}

#else

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>
#include <vector>

#include "analyzer/CharacterLexer.h"
#include "analyzer/ComplexMatchTrieDict.h"
#include "analyzer/Token.h"
#include "analyzer/TokenBuffer.h"
#include "analyzer/TrieDict.h"
#include "common/AutoPtr.h"
#include "common/InstanceCreator.h"
#include "cppjieba/MPSegment.hpp"
#include "cppjieba/MixSegment.hpp"

using namespace vortm::analyzer;
using vortm::common::AutoPtr;
using vortm::common::InstanceCreator;

namespace {

const std::string kDir = VORELIN_CPPJIEBA_DIR;
const std::string kDictPath = kDir + "/dict/jieba.dict.utf8";
const std::string kHmmPath = kDir + "/dict/hmm_model.utf8";
const std::string kTextPath = kDir + "/test/testdata/weicheng.utf8";

// A value of /proc/self/status in KiB; 0 where that is not readable.
long statusKiB(const char* key) {
  std::ifstream in("/proc/self/status");
  std::string line;
  size_t n = std::string(key).size();
  while (std::getline(in, line)) {
    if (line.compare(0, n, key) == 0 && line.size() > n && line[n] == ':') return std::atol(line.c_str() + n + 1);
  }
  return 0;
}

// Lets VmHWM start again from the present resident size.
void resetPeak() {
  std::ofstream out("/proc/self/clear_refs");
  out << "5";
}

double threadSeconds() {
  timespec ts;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
  return ts.tv_sec + ts.tv_nsec * 1e-9;
}

// Times `f` and reports the memory it leaves resident and the peak on the
// way, both above the resident size before it.
template <class F>
void reportLoad(const char* name, F f) {
  malloc_trim(0);
  resetPeak();
  long before = statusKiB("VmRSS");
  double start = threadSeconds();
  f();
  double s = threadSeconds() - start;
  std::printf("load %-24s %.3f s CPU  +%ld KiB resident  +%ld KiB peak\n", name, s, statusKiB("VmRSS") - before,
              statusKiB("VmHWM") - before);
}

struct Sides {
  TrieDict<unsigned int>* plain = nullptr;
  ComplexMatchTrieDict<unsigned int>* complex = nullptr;
  cppjieba::DictTrie* jiebaDict = nullptr;
  cppjieba::HMMModel* hmm = nullptr;
  cppjieba::MPSegment* mp = nullptr;
  cppjieba::MixSegment* mix = nullptr;
  std::vector<std::string> lines;
  size_t bytes = 0;
  std::string savedFile;
};

// The word list inserted word by word, the first field of each line, and
// saved where both of our dictionaries load it from.
void saveOurs(Sides& s) {
  s.savedFile = "/tmp/vorelin_cppjieba_compare_" + std::to_string(getpid()) + ".dict";
  double start = threadSeconds();
  {
    TrieDict<unsigned int> d("basicUTF8Lexer");
    std::ifstream in(kDictPath);
    std::string line;
    while (std::getline(in, line)) {
      size_t end = line.find(' ');
      if (!line.empty() && end != 0) d.insert(line.substr(0, end), 0x0206);
    }
    if (!d.saveTo(s.savedFile)) {
      std::printf("cannot save %s\n", s.savedFile.c_str());
      std::exit(1);
    }
  }
  std::printf("insert the word list and save it (ours)  %.3f s CPU\n", threadSeconds() - start);
}

template <class D>
D* loadOurs(const std::string& file) {
  D* d = new D("basicUTF8Lexer");
  if (!d->loadFrom(file)) {
    std::printf("cannot load %s\n", file.c_str());
    std::exit(1);
  }
  return d;
}

Sides& sides() {
  static Sides* s = [] {
    Sides* s = new Sides();
    std::ifstream in(kTextPath);
    std::string line;
    while (std::getline(in, line)) {
      if (line.empty()) continue;
      s->bytes += line.size();
      s->lines.push_back(line);
    }
    saveOurs(*s);
    reportLoad("TrieDict", [&] { s->plain = loadOurs<TrieDict<unsigned int> >(s->savedFile); });
    reportLoad("ComplexMatchTrieDict", [&] { s->complex = loadOurs<ComplexMatchTrieDict<unsigned int> >(s->savedFile); });
    reportLoad("cppjieba DictTrie", [&] { s->jiebaDict = new cppjieba::DictTrie(kDictPath); });
    reportLoad("cppjieba HMMModel", [&] { s->hmm = new cppjieba::HMMModel(kHmmPath); });
    std::remove(s->savedFile.c_str());
    s->mp = new cppjieba::MPSegment(s->jiebaDict);
    s->mix = new cppjieba::MixSegment(s->jiebaDict, s->hmm);
    std::printf("text %s: %zu bytes in %zu lines\n", kTextPath.c_str(), s->bytes, s->lines.size());
    std::fflush(stdout);
    return s;
  }();
  return *s;
}

// One pass of our dictionary over the text; returns the tokens read back.
struct OurPass {
  explicit OurPass(Dict& d) : dict(d), lexer(InstanceCreator<CharacterLexer>::getCreation("basicUTF8Lexer"), true) {}

  size_t run(const std::vector<std::string>& lines) {
    size_t tokens = 0;
    for (const std::string& line : lines) {
      refs.assign(line.size() + 1, 1);
      lexer->setText(line);
      unsigned int offset, length;
      while (lexer->doLexer(offset, length) == 1) refs[offset] = length;
      out.reset();
      dict.match(line.data(), static_cast<unsigned int>(line.size()), refs.data(), out, 0);
      AutoPtr<TokenBuffer::Iterator> it = out.iterator();
      while (it->hasNext()) {
        it->next(token);
        ++tokens;
      }
    }
    return tokens;
  }

  Dict& dict;
  AutoPtr<CharacterLexer> lexer;
  std::vector<unsigned int> refs;
  TokenBuffer out;
  Token token;
};

template <class Segment>
struct JiebaPass {
  explicit JiebaPass(const Segment& s) : seg(s) {}

  size_t run(const std::vector<std::string>& lines) {
    size_t tokens = 0;
    for (const std::string& line : lines) {
      seg.Cut(line, words);
      tokens += words.size();
    }
    return tokens;
  }

  const Segment& seg;
  std::vector<std::string> words;
};

template <class Pass>
void runBench(benchmark::State& state, Pass&& pass) {
  Sides& s = sides();
  size_t tokens = 0;
  for (auto _ : state) tokens += pass.run(s.lines);
  benchmark::DoNotOptimize(tokens);
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * s.bytes));
}

void BM_OurForwardMatch(benchmark::State& state) { runBench(state, OurPass(*sides().plain)); }
void BM_JiebaMPSegment(benchmark::State& state) { runBench(state, JiebaPass<cppjieba::MPSegment>(*sides().mp)); }
void BM_OurComplexMatch(benchmark::State& state) { runBench(state, OurPass(*sides().complex)); }
void BM_JiebaMixSegment(benchmark::State& state) { runBench(state, JiebaPass<cppjieba::MixSegment>(*sides().mix)); }

BENCHMARK(BM_OurForwardMatch)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_JiebaMPSegment)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_OurComplexMatch)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_JiebaMixSegment)->Unit(benchmark::kMillisecond)->MinTime(2.0);

template <class Pass>
void timePasses(const char* name, Pass&& pass, int passes) {
  Sides& s = sides();
  double start = threadSeconds();
  size_t tokens = 0;
  for (int p = 0; p < passes; ++p) tokens += pass.run(s.lines);
  double cpu = threadSeconds() - start;
  std::printf("%-8s %d passes  %zu tokens  %.3f s CPU  %.2f MB/s\n", name, passes, tokens, cpu,
              cpu > 0 ? passes * s.bytes / cpu / 1e6 : 0.0);
}

int runPasses(int passes, const std::string& only) {
  Sides& s = sides();
  if (only.empty() || only == "forward") timePasses("forward", OurPass(*s.plain), passes);
  if (only.empty() || only == "mp") timePasses("mp", JiebaPass<cppjieba::MPSegment>(*s.mp), passes);
  if (only.empty() || only == "complex") timePasses("complex", OurPass(*s.complex), passes);
  if (only.empty() || only == "mix") timePasses("mix", JiebaPass<cppjieba::MixSegment>(*s.mix), passes);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  int passes = 0;
  std::string only;
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (arg.compare(0, 9, "--passes=") == 0) passes = std::atoi(arg.c_str() + 9);
    if (arg.compare(0, 7, "--only=") == 0) only = arg.substr(7);
  }
  if (passes > 0) return runPasses(passes, only);
  benchmark::Initialize(&argc, argv);
  sides();
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

#endif
