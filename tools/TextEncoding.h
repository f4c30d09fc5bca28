#ifndef VORELIN_TOOLS_TEXTENCODING_H
#define VORELIN_TOOLS_TEXTENCODING_H

#include <string>

namespace vorelin {
namespace cli {

// Accepts utf-8/utf8 and gbk/gb2312 in either case; sets `gbk`.
bool parseEncoding(const std::string& value, bool& gbk);

// Converts text between two encodings through iconv; false for text with a
// character the target lacks, or invalid input.
class TextConverter {
 public:
  TextConverter(const char* to, const char* from);
  ~TextConverter();
  TextConverter(const TextConverter&) = delete;
  TextConverter& operator=(const TextConverter&) = delete;

  bool ok() const;
  bool convert(const std::string& in, std::string& out);

 private:
  void* m_cd;
};

}  // namespace cli
}  // namespace vorelin

#endif
