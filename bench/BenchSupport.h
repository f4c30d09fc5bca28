#ifndef VORELIN_BENCH_BENCHSUPPORT_H
#define VORELIN_BENCH_BENCHSUPPORT_H

#include <benchmark/benchmark.h>
#include <iconv.h>

#include <cstdint>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "vorelin.h"

namespace vortm {
namespace bench {

// A deterministic mixed Chinese/English review-like text of about `bytes`
// bytes (UTF-8): the same seed always gives the same text.
inline std::string mixedText(size_t bytes, uint32_t seed = 12345) {
  static const char* zh[] = {"这家", "酒店", "的", "服务", "非常", "好", "房间", "干净", "整洁", "但是", "早餐",
                             "一般", "价格", "有点", "贵", "不过", "位置", "很", "方便", "下次", "还会", "再来",
                             "外卖", "送得", "太慢", "了", "菜", "都", "凉", "味道", "不错", "推荐", "质量",
                             "不好", "失望", "快递", "包装", "完好", "性价比", "高", "客服", "态度", "差"};
  static const char* en[] = {"the", "hotel", "was", "great", "and", "staff", "were", "friendly", "but", "room",
                             "small", "food", "terrible", "not", "good", "delivery", "late", "price", "fair",
                             "would", "recommend", "it", "quality", "poor", "very", "happy", "with", "service"};
  static const char* punct[] = {"，", "。", "！", "？", ", ", ". ", "! ", "\n"};
  std::string out;
  out.reserve(bytes + 64);
  uint32_t x = seed;
  auto next = [&x]() {
    x = x * 1664525u + 1013904223u;
    return x >> 8;
  };
  while (out.size() < bytes) {
    bool chinese = next() % 3 != 0;
    int words = 3 + next() % 10;
    for (int i = 0; i < words; ++i) {
      if (chinese) {
        out += zh[next() % (sizeof(zh) / sizeof(zh[0]))];
      } else {
        out += en[next() % (sizeof(en) / sizeof(en[0]))];
        out += ' ';
      }
    }
    out += punct[next() % (sizeof(punct) / sizeof(punct[0]))];
  }
  return out;
}

// Cuts a text into review-sized lines.
inline std::vector<std::string> splitLines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  std::string line;
  while (std::getline(in, line))
    if (!line.empty()) lines.push_back(line);
  return lines;
}

inline std::string toGbk(const std::string& utf8) {
  iconv_t cd = iconv_open("GBK", "UTF-8");
  std::string out(utf8.size() * 2 + 16, '\0');
  char* src = const_cast<char*>(utf8.data());
  size_t srcLeft = utf8.size();
  char* dst = &out[0];
  size_t dstLeft = out.size();
  iconv(cd, &src, &srcLeft, &dst, &dstLeft);
  iconv_close(cd);
  out.resize(out.size() - dstLeft);
  return out;
}

inline std::string readFileOr(const std::string& path, const std::string& fallback) {
  if (path.empty()) return fallback;
  std::ifstream in(path, std::ios::binary);
  if (!in) return fallback;
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

// The value of a "--name=value" argument, or `fallback`.
inline std::string flagValue(int argc, char** argv, const std::string& prefix, const std::string& fallback = "") {
  for (int i = 1; i < argc; ++i)
    if (std::string(argv[i]).compare(0, prefix.size(), prefix) == 0) return argv[i] + prefix.size();
  return fallback;
}

// The lines of `textFile`, or of 4 MB of generated text when none is given;
// their count and mean length go to standard error.
inline std::vector<std::string> benchLines(const std::string& textFile) {
  std::vector<std::string> lines = splitLines(readFileOr(textFile, mixedText(4 << 20)));
  size_t bytes = 0;
  for (const auto& l : lines) bytes += l.size();
  std::cerr << lines.size() << " texts, " << bytes / (lines.empty() ? 1 : lines.size()) << " bytes on average\n";
  return lines;
}

// Senti_Classifier_Init with the library's log records silenced; false with
// a message on standard error when it fails.
inline bool openClassifier(const std::string& config, void*& handle) {
  std::streambuf* old = std::cout.rdbuf(nullptr);
  const int ok = Senti_Classifier_Init(config.c_str(), &handle);
  std::cout.rdbuf(old);
  if (!ok) std::cerr << "cannot initialise a classifier from " << config << "\n";
  return ok == 1;
}

inline void closeClassifier(void* handle) {
  std::streambuf* old = std::cout.rdbuf(nullptr);
  Senti_Classifier_Exit(handle);
  std::cout.rdbuf(old);
}

// The benchmark loop: classifies the lines in turn from `start` on, and
// reports bytes and texts processed.
inline void classifyEach(benchmark::State& state, void* handle, const std::vector<std::string>& lines,
                         size_t start = 0) {
  size_t i = start;
  int64_t bytes = 0;
  for (auto _ : state) {
    const std::string& line = lines[i++ % lines.size()];
    double score = 0.0;
    Senti_Classify_Perform(handle, line.c_str(), &score);
    benchmark::DoNotOptimize(score);
    bytes += static_cast<int64_t>(line.size());
  }
  state.SetBytesProcessed(bytes);
  state.SetItemsProcessed(state.iterations());
}

}  // namespace bench
}  // namespace vortm

#endif
