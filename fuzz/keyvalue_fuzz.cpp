// Arbitrary bytes into the key-value reader. Whatever it accepts must read
// back the same from its own rendering: every pair survives "key = value".
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

#include "FuzzSupport.h"
#include "utility/BasicKeyValueParser.h"

using vortm::utility::BasicKeyValueParser;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > (1 << 16)) return 0;
  std::string text(reinterpret_cast<const char*>(data), size);
  BasicKeyValueParser parser;
  std::map<std::string, std::string> out;
  if (!parser.parseText(text, out)) {
    FUZZ_CHECK(parser.getErrorLine() > 0 && !parser.getError().empty());
    return 0;
  }
  FUZZ_CHECK(parser.getErrorLine() == 0);
  // A leading line keeps a key that starts with a byte order mark a key.
  std::string rendered = "\n";
  for (const auto& kv : out) {
    FUZZ_CHECK(!kv.first.empty() && kv.first[0] != '#');
    FUZZ_CHECK(kv.first.find('=') == std::string::npos && kv.first.find('\n') == std::string::npos);
    rendered += kv.first + " = " + kv.second + "\n";
  }
  std::map<std::string, std::string> again;
  FUZZ_CHECK(parser.parseText(rendered, again));
  FUZZ_CHECK(again == out);
  return 0;
}
