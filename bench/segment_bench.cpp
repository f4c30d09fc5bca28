// Plain maximum forward match against the three-word look-ahead of
// ComplexMatchTrieDict, over one dictionary (jieba's dict.txt, about 349K
// words, or a small built-in list if it is absent) and two texts: generated
// review-like text, and a run of random dictionary words, which is full of
// ambiguous joins. For each text the start-up report gives the tokens of
// both segmentations and the number of token start offsets found in one and
// not the other; the benchmarks give words (dictionary tokens) per second.
//
//   segment_bench [--dict=/path/to/dict.txt] [--text=/path/to/utf8.txt] [benchmark flags]
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "BenchSupport.h"
#include "analyzer/CharacterLexer.h"
#include "analyzer/ComplexMatchTrieDict.h"
#include "analyzer/TokenBuffer.h"
#include "analyzer/TrieDict.h"
#include "common/AutoPtr.h"
#include "common/InstanceCreator.h"

using namespace vortm::analyzer;
using vortm::common::AutoPtr;
using vortm::common::InstanceCreator;

namespace {

std::string g_dictPath = "/usr/lib/python3/dist-packages/jieba/dict.txt";
std::string g_textPath;
const size_t kTextBytes = 1 << 20;

const char* const kFallbackWords[] = {
    "研究", "研究生", "生命", "起源", "命", "这家", "酒店", "服务", "非常", "房间", "干净", "整洁", "但是",
    "早餐", "一般", "价格", "有点", "不过", "位置", "方便", "下次", "还会", "再来", "外卖", "送得", "太慢",
    "味道", "不错", "推荐", "质量", "不好", "失望", "快递", "包装", "完好", "性价比", "客服", "态度", "好",
    "家酒", "店的", "服务非常", "非常好", "房间干净", "下次还会", "会再", "价格有", "有点贵", "点贵"};

struct Text {
  std::string name;
  std::string bytes;
  std::vector<std::pair<unsigned int, unsigned int> > docs;  // offset, length
  std::vector<unsigned int> forwardRefs;                      // one per byte
};

struct Setup {
  std::vector<std::string> words;
  TrieDict<unsigned int>* plain = nullptr;
  ComplexMatchTrieDict<unsigned int>* complex = nullptr;
  std::vector<Text> texts;
};

std::vector<std::string> loadWords() {
  std::vector<std::string> words;
  std::ifstream in(g_dictPath);
  std::string line;
  while (in && std::getline(in, line)) {
    std::string word = line.substr(0, line.find_first_of(" \t\r"));
    if (!word.empty()) words.push_back(word);
  }
  if (words.empty()) {
    std::cout << "dictionary " << g_dictPath << " not readable, using the built-in list\n";
    words.assign(std::begin(kFallbackWords), std::end(kFallbackWords));
  }
  return words;
}

// Documents are the text's lines; the characters are cut once, as the
// tokenizer would, so that the benchmarks time the dictionaries alone.
Text makeText(const std::string& name, const std::string& bytes) {
  Text t;
  t.name = name;
  t.bytes = bytes;
  size_t start = 0;
  while (start < t.bytes.size()) {
    size_t end = t.bytes.find('\n', start);
    if (end == std::string::npos) end = t.bytes.size();
    if (end > start) t.docs.push_back(std::make_pair(start, end - start));
    start = end + 1;
  }
  t.forwardRefs.assign(t.bytes.size() + 1, 1);
  AutoPtr<CharacterLexer> lexer(InstanceCreator<CharacterLexer>::getCreation("basicUTF8Lexer"), true);
  lexer->setText(t.bytes);
  unsigned int offset, length;
  while (lexer->doLexer(offset, length) == 1) t.forwardRefs[offset] = length;
  return t;
}

// Random dictionary words run together in lines of about 60, with some
// punctuation; a fixed generator keeps the text the same from run to run.
std::string dictWordText(const std::vector<std::string>& words) {
  static const char* punct[] = {"，", "。", "！", "？", "、"};
  uint64_t x = 20261121;
  auto next = [&x]() {
    x = x * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<uint32_t>(x >> 33);
  };
  std::string out;
  int inLine = 0;
  while (out.size() < kTextBytes) {
    out += words[next() % words.size()];
    if (next() % 100 < 10) out += punct[next() % 5];
    if (++inLine == 60) {
      out += '\n';
      inLine = 0;
    }
  }
  return out;
}

struct Segmentation {
  std::vector<long> starts;  // every token's start offset, in order
  std::vector<std::string> terms;
  size_t words = 0;          // tokens that are dictionary words
};

Segmentation segment(Dict& dict, Text& t) {
  Segmentation s;
  TokenBuffer out;
  for (const auto& doc : t.docs) {
    out.reset();
    dict.match(t.bytes.data() + doc.first, doc.second, t.forwardRefs.data() + doc.first, out, doc.first);
    AutoPtr<TokenBuffer::Iterator> it = out.iterator();
    Token token;
    while (it->hasNext()) {
      it->next(token);
      s.starts.push_back(token.startOffset);
      s.terms.push_back(token.term);
      if (token.type != Token::TT_TEXT_SPAN) ++s.words;
    }
  }
  return s;
}

void compare(Setup& setup, Text& t) {
  auto start = std::chrono::steady_clock::now();
  Segmentation plain = segment(*setup.plain, t);
  double plainSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  start = std::chrono::steady_clock::now();
  Segmentation complex = segment(*setup.complex, t);
  double complexSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();

  std::vector<long> onlyPlain, onlyComplex;
  std::set_difference(plain.starts.begin(), plain.starts.end(), complex.starts.begin(), complex.starts.end(),
                      std::back_inserter(onlyPlain));
  std::set_difference(complex.starts.begin(), complex.starts.end(), plain.starts.begin(), plain.starts.end(),
                      std::back_inserter(onlyComplex));
  std::printf("%s text: %zu bytes in %zu lines\n", t.name.c_str(), t.bytes.size(), t.docs.size());
  std::printf("  plain:   %zu tokens, %zu words, one pass %.3f s\n", plain.starts.size(), plain.words, plainSeconds);
  std::printf("  complex: %zu tokens, %zu words, one pass %.3f s\n", complex.starts.size(), complex.words,
              complexSeconds);
  std::printf("  start offsets in one segmentation only: %zu (plain only %zu, complex only %zu), %.2f%% of plain's\n",
              onlyPlain.size() + onlyComplex.size(), onlyPlain.size(), onlyComplex.size(),
              plain.starts.empty() ? 0.0 : 100.0 * (onlyPlain.size() + onlyComplex.size()) / plain.starts.size());

  // A few places where they part, each as the tokens of both around it.
  size_t shown = 0;
  for (size_t c = 0; c < complex.starts.size() && shown < 3; ++c) {
    if (std::binary_search(plain.starts.begin(), plain.starts.end(), complex.starts[c])) continue;
    size_t p = std::lower_bound(plain.starts.begin(), plain.starts.end(), complex.starts[c]) - plain.starts.begin();
    std::string a, b;
    for (size_t k = p > 0 ? p - 1 : 0; k < std::min(plain.terms.size(), p + 2); ++k) a += plain.terms[k] + "|";
    for (size_t k = c > 0 ? c - 1 : 0; k < std::min(complex.terms.size(), c + 2); ++k) b += complex.terms[k] + "|";
    std::printf("    plain %s  complex %s\n", a.c_str(), b.c_str());
    ++shown;
  }
}

Setup& setup() {
  static Setup* s = [] {
    Setup* s = new Setup();
    s->words = loadWords();
    s->plain = new TrieDict<unsigned int>("basicUTF8Lexer");
    s->complex = new ComplexMatchTrieDict<unsigned int>("basicUTF8Lexer");
    for (const std::string& w : s->words) {
      s->plain->insert(w, 0x0206);
      s->complex->insert(w, 0x0206);
    }
    std::string review = vortm::bench::readFileOr(g_textPath, vortm::bench::mixedText(kTextBytes));
    s->texts.push_back(makeText(g_textPath.empty() ? "review-like" : g_textPath, review));
    s->texts.push_back(makeText("dictionary-word", dictWordText(s->words)));
    std::printf("dictionary: %zu words from %s\n", s->words.size(), g_dictPath.c_str());
    for (Text& t : s->texts) compare(*s, t);
    std::fflush(stdout);
    return s;
  }();
  return *s;
}

void runMatch(benchmark::State& state, Dict& dict, Text& t) {
  TokenBuffer out;
  size_t words = 0;
  for (auto _ : state) {
    for (const auto& doc : t.docs) {
      out.reset();
      dict.match(t.bytes.data() + doc.first, doc.second, t.forwardRefs.data() + doc.first, out, doc.first);
      AutoPtr<TokenBuffer::Iterator> it = out.iterator();
      Token token;
      while (it->hasNext()) {
        it->next(token);
        if (token.type != Token::TT_TEXT_SPAN) ++words;
      }
    }
  }
  state.counters["words_per_s"] = benchmark::Counter(static_cast<double>(words), benchmark::Counter::kIsRate);
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(t.bytes.size()));
}

void BM_PlainMatch(benchmark::State& state) {
  Setup& s = setup();
  runMatch(state, *s.plain, s.texts[state.range(0)]);
  state.SetLabel(s.texts[state.range(0)].name);
}

void BM_ComplexMatch(benchmark::State& state) {
  Setup& s = setup();
  runMatch(state, *s.complex, s.texts[state.range(0)]);
  state.SetLabel(s.texts[state.range(0)].name);
}

BENCHMARK(BM_PlainMatch)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_ComplexMatch)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->MinTime(2.0);

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (arg.compare(0, 7, "--dict=") == 0) g_dictPath = arg.substr(7);
    if (arg.compare(0, 7, "--text=") == 0) g_textPath = arg.substr(7);
  }
  setup();
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
