#ifndef VORELIN_TESTS_MODULAR_SAVEDBYTES_H
#define VORELIN_TESTS_MODULAR_SAVEDBYTES_H

#include <cstring>
#include <string>

namespace vortm {
namespace testing {

// Builds saved files byte by byte: little-endian integers and doubles, and
// strings as a 32-bit length followed by their (already Base64) text.
class SavedBytes {
 public:
  SavedBytes& u32(unsigned int v) { return raw(&v, 4); }
  SavedBytes& u64(unsigned long v) { return raw(&v, 8); }
  SavedBytes& f64(double v) { return raw(&v, 8); }
  SavedBytes& byte(unsigned char v) { return raw(&v, 1); }
  SavedBytes& str(const std::string& coded) {
    u32(static_cast<unsigned int>(coded.size()));
    m_bytes += coded;
    return *this;
  }
  // One vocabulary record: word, df, tf and the end mark.
  SavedBytes& word(const std::string& coded, unsigned int df, unsigned int tf) {
    return str(coded).u32(df).u32(tf).byte(0x0A);
  }
  const std::string& bytes() const { return m_bytes; }

 private:
  SavedBytes& raw(const void* p, size_t n) {
    m_bytes.append(static_cast<const char*>(p), n);
    return *this;
  }
  std::string m_bytes;
};

}  // namespace testing
}  // namespace vortm

#endif
