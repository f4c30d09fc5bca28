#ifndef VORELIN_BENCH_BENCHSUPPORT_H
#define VORELIN_BENCH_BENCHSUPPORT_H

#include <iconv.h>

#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

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

}  // namespace bench
}  // namespace vortm

#endif
