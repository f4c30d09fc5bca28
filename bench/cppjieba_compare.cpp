// Our segmenters side by side with cppjieba's, on the same dictionary
// (jieba.dict.utf8, about 349K words) and the same text (weicheng.utf8),
// both taken from the npm package nodejieba that bench/CMakeLists.txt fetches
// into the build tree at configure time. Nothing of that package is part of
// the library or the tools; without it this program says so and exits.
//
// Pairs: our maximum forward match (TrieDict) against MPSegment, our complex
// maximum match (ComplexMatchTrieDict) against MixSegment. Each side decodes
// the characters of every line itself (our lexer fills the character
// lengths) and reads its tokens back. The start-up report gives load time and
// the resident memory each dictionary adds; the benchmarks give MB/s.
//
//   cppjieba_compare_bench [benchmark flags]
#include <cstdio>

#ifndef VORELIN_CPPJIEBA_DIR

int main() {
  std::printf("cppjieba comparison skipped: the npm package nodejieba 3.5.8 was not available at configure time\n");
  return 0;
}

#else

#include <benchmark/benchmark.h>

#include <chrono>
#include <fstream>
#include <sstream>
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

// Resident set size in KiB, from /proc; 0 where that is not readable.
long residentKiB() {
  std::ifstream in("/proc/self/status");
  std::string line;
  while (std::getline(in, line)) {
    if (line.compare(0, 6, "VmRSS:") == 0) return std::stol(line.substr(6));
  }
  return 0;
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
};

template <class F>
double timed(F f, long& kib) {
  long before = residentKiB();
  auto start = std::chrono::steady_clock::now();
  f();
  double s = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  kib = residentKiB() - before;
  return s;
}

// Our dictionaries are filled from the same file, word by word, as a
// dictionary list is read: the first field of each line.
template <class D>
D* loadOurs() {
  D* d = new D("basicUTF8Lexer");
  std::ifstream in(kDictPath);
  std::string line;
  while (std::getline(in, line)) {
    size_t end = line.find(' ');
    if (!line.empty() && end != 0) d->insert(line.substr(0, end), 0x0206);
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
    long kib = 0;
    double t = timed([&] { s->plain = loadOurs<TrieDict<unsigned int> >(); }, kib);
    std::printf("load TrieDict              %.3f s  +%ld KiB resident\n", t, kib);
    t = timed([&] { s->complex = loadOurs<ComplexMatchTrieDict<unsigned int> >(); }, kib);
    std::printf("load ComplexMatchTrieDict  %.3f s  +%ld KiB resident\n", t, kib);
    t = timed([&] { s->jiebaDict = new cppjieba::DictTrie(kDictPath); }, kib);
    std::printf("load cppjieba DictTrie     %.3f s  +%ld KiB resident\n", t, kib);
    t = timed([&] { s->hmm = new cppjieba::HMMModel(kHmmPath); }, kib);
    std::printf("load cppjieba HMMModel     %.3f s  +%ld KiB resident\n", t, kib);
    s->mp = new cppjieba::MPSegment(s->jiebaDict);
    s->mix = new cppjieba::MixSegment(s->jiebaDict, s->hmm);
    std::printf("text %s: %zu bytes in %zu lines\n", kTextPath.c_str(), s->bytes, s->lines.size());
    std::fflush(stdout);
    return s;
  }();
  return *s;
}

void runOurs(benchmark::State& state, Dict& dict) {
  Sides& s = sides();
  AutoPtr<CharacterLexer> lexer(InstanceCreator<CharacterLexer>::getCreation("basicUTF8Lexer"), true);
  std::vector<unsigned int> refs;
  TokenBuffer out;
  Token token;
  size_t tokens = 0;
  for (auto _ : state) {
    for (const std::string& line : s.lines) {
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
  }
  benchmark::DoNotOptimize(tokens);
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * s.bytes));
}

template <class Segment>
void runJieba(benchmark::State& state, const Segment& seg) {
  Sides& s = sides();
  std::vector<std::string> words;
  size_t tokens = 0;
  for (auto _ : state) {
    for (const std::string& line : s.lines) {
      seg.Cut(line, words);
      tokens += words.size();
    }
  }
  benchmark::DoNotOptimize(tokens);
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * s.bytes));
}

void BM_OurForwardMatch(benchmark::State& state) { runOurs(state, *sides().plain); }
void BM_JiebaMPSegment(benchmark::State& state) { runJieba(state, *sides().mp); }
void BM_OurComplexMatch(benchmark::State& state) { runOurs(state, *sides().complex); }
void BM_JiebaMixSegment(benchmark::State& state) { runJieba(state, *sides().mix); }

BENCHMARK(BM_OurForwardMatch)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_JiebaMPSegment)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_OurComplexMatch)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_JiebaMixSegment)->Unit(benchmark::kMillisecond)->MinTime(2.0);

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  sides();
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

#endif
