#include "TextEncoding.h"

#include <iconv.h>

#include <vector>

namespace vorelin {
namespace cli {

bool parseEncoding(const std::string& value, bool& gbk) {
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

TextConverter::TextConverter(const char* to, const char* from) : m_cd(iconv_open(to, from)) {}

TextConverter::~TextConverter() {
  if (ok()) iconv_close(static_cast<iconv_t>(m_cd));
}

bool TextConverter::ok() const { return m_cd != reinterpret_cast<void*>(-1); }

bool TextConverter::convert(const std::string& in, std::string& out) {
  if (!ok()) return false;
  iconv_t cd = static_cast<iconv_t>(m_cd);
  iconv(cd, nullptr, nullptr, nullptr, nullptr);
  // Four bytes out per byte in covers GBK to UTF-8 and back.
  std::vector<char> buffer(in.size() * 4 + 8);
  char* src = const_cast<char*>(in.data());
  size_t srcLeft = in.size();
  char* dst = buffer.data();
  size_t dstLeft = buffer.size();
  if (iconv(cd, &src, &srcLeft, &dst, &dstLeft) == static_cast<size_t>(-1)) return false;
  out.assign(buffer.data(), buffer.size() - dstLeft);
  return true;
}

}  // namespace cli
}  // namespace vorelin
