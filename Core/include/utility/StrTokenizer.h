#ifndef VORTM_UTILITY_STRTOKENIZER_H
#define VORTM_UTILITY_STRTOKENIZER_H

#include <string>
#include <vector>

namespace vortm {
namespace utility {

// Splits a text into maximal runs of bytes outside a separator set, so no
// empty field ever arises.
class strtokenizer {
 public:
  strtokenizer(std::string& text, std::string& separators);

  void parse(std::string& text, std::string& separators);
  void start_scan();
  int count_tokens();
  // The token at the scan position, advancing it; "" behind the end.
  std::string next_token();
  // "" for an index out of range.
  std::string token(int i);

 protected:
  std::vector<std::string> tokens;
  int idx;
};

}  // namespace utility
}  // namespace vortm

#endif
