#ifndef VORELIN_TOOLS_GBKCONVERTER_H
#define VORELIN_TOOLS_GBKCONVERTER_H

#include <iconv.h>

#include <string>
#include <vector>

namespace vorelin {
namespace cli {

// Converts words between UTF-8, the encoding of our lists, and GBK; false for
// a word with a character that the target encoding lacks.
class GbkConverter {
 public:
  explicit GbkConverter(bool toGbk = true)
      : m_cd(toGbk ? iconv_open("GBK", "UTF-8") : iconv_open("UTF-8", "GBK")) {}
  ~GbkConverter() {
    if (ok()) iconv_close(m_cd);
  }
  GbkConverter(const GbkConverter&) = delete;
  GbkConverter& operator=(const GbkConverter&) = delete;

  bool ok() const { return m_cd != reinterpret_cast<iconv_t>(-1); }
  bool convert(const std::string& in, std::string& out) {
    iconv(m_cd, nullptr, nullptr, nullptr, nullptr);
    std::vector<char> buffer(in.size() * 2 + 8);
    char* src = const_cast<char*>(in.data());
    size_t srcLeft = in.size();
    char* dst = buffer.data();
    size_t dstLeft = buffer.size();
    if (iconv(m_cd, &src, &srcLeft, &dst, &dstLeft) == static_cast<size_t>(-1)) return false;
    out.assign(buffer.data(), buffer.size() - dstLeft);
    return true;
  }

 private:
  iconv_t m_cd;
};

// "utf-8" and "gbk" in their usual spellings; false for anything else.
inline bool parseEncoding(const std::string& value, bool& gbk) {
  if (value == "utf-8" || value == "utf8" || value == "UTF-8" || value == "UTF8") {
    gbk = false;
    return true;
  }
  if (value == "gbk" || value == "GBK" || value == "gb2312" || value == "GB2312") {
    gbk = true;
    return true;
  }
  return false;
}

}  // namespace cli
}  // namespace vorelin

#endif
