#ifndef VORELIN_FUZZ_FUZZSUPPORT_H
#define VORELIN_FUZZ_FUZZSUPPORT_H

#include <iostream>
#include <streambuf>

namespace vortm {
namespace fuzzing {

// Swallows everything: the library logs to std::cout, which would drown the
// fuzzer's own output.
class NullBuffer : public std::streambuf {
 protected:
  int overflow(int c) override { return c; }
};

inline void silenceOutput() {
  static NullBuffer null;
  std::cout.rdbuf(&null);
}

}  // namespace fuzzing
}  // namespace vortm

#endif
