#include "utility/StrTokenizer.h"

namespace vortm {
namespace utility {

strtokenizer::strtokenizer(std::string& text, std::string& separators) : idx(0) { parse(text, separators); }

void strtokenizer::parse(std::string& text, std::string& separators) {
  tokens.clear();
  std::string::size_type start = text.find_first_not_of(separators);
  while (start != std::string::npos) {
    std::string::size_type end = text.find_first_of(separators, start);
    if (end == std::string::npos) {
      tokens.push_back(text.substr(start));
      break;
    }
    tokens.push_back(text.substr(start, end - start));
    start = text.find_first_not_of(separators, end);
  }
  start_scan();
}

void strtokenizer::start_scan() { idx = 0; }

int strtokenizer::count_tokens() { return static_cast<int>(tokens.size()); }

std::string strtokenizer::next_token() {
  if (idx >= 0 && idx < static_cast<int>(tokens.size())) return tokens[idx++];
  return "";
}

std::string strtokenizer::token(int i) {
  if (i >= 0 && i < static_cast<int>(tokens.size())) return tokens[i];
  return "";
}

}  // namespace utility
}  // namespace vortm
