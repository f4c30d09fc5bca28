#include "utility/Utility.h"

namespace vortm {
namespace utility {

// Paul Hsieh's SuperFastHash. Tail bytes are read as signed chars, so the
// values match those of the saved tables and registries built before.
uint32_t Utility::hash(const std::string& str) {
  const unsigned char* data = reinterpret_cast<const unsigned char*>(str.data());
  uint32_t len = static_cast<uint32_t>(str.size());
  if (len == 0) return 0;
  uint32_t h = len;
  uint32_t rem = len & 3;
  len >>= 2;
  auto get16 = [](const unsigned char* d) -> uint32_t {
    return static_cast<uint32_t>(d[0]) | (static_cast<uint32_t>(d[1]) << 8);
  };
  for (; len > 0; --len) {
    h += get16(data);
    uint32_t t = (get16(data + 2) << 11) ^ h;
    h = (h << 16) ^ t;
    data += 4;
    h += h >> 11;
  }
  switch (rem) {
    case 3:
      h += get16(data);
      h ^= h << 16;
      h ^= static_cast<uint32_t>(static_cast<int32_t>(static_cast<signed char>(data[2]))) << 18;
      h += h >> 11;
      break;
    case 2:
      h += get16(data);
      h ^= h << 11;
      h += h >> 17;
      break;
    case 1:
      h += static_cast<uint32_t>(static_cast<int32_t>(static_cast<signed char>(data[0])));
      h ^= h << 10;
      h += h >> 1;
      break;
  }
  h ^= h << 3;
  h += h >> 5;
  h ^= h << 4;
  h += h >> 17;
  h ^= h << 25;
  h += h >> 6;
  return h;
}

}  // namespace utility
}  // namespace vortm
