// Arbitrary bytes into the configuration reader: as XML text, and as a saved
// parameter tree read back through a buffer pool. The first byte chooses.
#include <cstddef>
#include <cstdint>
#include <string>

#include "FuzzSupport.h"
#include "common/AutoPtr.h"
#include "configure/BasicParamParser.h"
#include "configure/Parameter.h"
#include "utility/BufferPool.h"

using vortm::common::AutoPtr;
using vortm::configure::BasicParamParser;
using vortm::configure::Parameter;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static bool once = (vortm::fuzzing::silenceOutput(), true);
  (void)once;
  if (size == 0) return 0;
  const uint8_t mode = data[0] & 1;
  ++data;
  --size;

  if (mode == 0) {
    BasicParamParser parser;
    AutoPtr<Parameter> root;
    std::string text(reinterpret_cast<const char*>(data), size);
    if (parser.doParseFromText(text, root) && root) {
      // No path look-ups here: a block asked for its own name resolves to
      // itself and stops the process by design.
      // A parsed tree must survive printing and a save/load round trip;
      // saved strings stop at a zero byte, so only trees without one compare.
      std::string printed = root->toString();
      vortm::utility::BufferPool pool(true);
      if (root->writeSelf(pool)) {
        Parameter copy;
        if (!copy.readSelf(pool)) __builtin_trap();
        if (printed.find('\0') == std::string::npos && copy.toString() != printed) __builtin_trap();
      }
    }
  } else {
    // The pool reads foreign memory without copying or freeing it.
    vortm::utility::BufferPool pool(const_cast<unsigned char*>(data), static_cast<unsigned long>(size));
    Parameter tree;
    if (tree.readSelf(pool)) tree.toString();
  }
  return 0;
}
