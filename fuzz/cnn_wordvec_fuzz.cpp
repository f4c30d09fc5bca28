// Arbitrary bytes as a word vector file: a load that succeeds has a
// dimension above 1 and ids within its rows; a forged dimension must not
// cost memory out of proportion to the file.
#include "FuzzSupport.h"
#include "modular/StdConvDocVectorBuilder.h"

using namespace vortm;
using namespace vortm::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static bool once = (silenceOutput(), true);
  (void)once;
  static const TempFile vecFile("cnnw_vec");
  if (size > (64 << 10)) return 0;
  if (!vecFile.write(data, size)) return 0;
  modular::StdConvDocVectorBuilder builder;
  if (!builder.loadWordVec(vecFile.path)) return 0;
  FUZZ_CHECK(builder.getWordDim() > 1);
  // Each row costs at least one byte per value in the file.
  FUZZ_CHECK(builder.getWordCount() * static_cast<size_t>(builder.getWordDim()) <= size);
  for (const char* w : {"a", "b", "0", ""}) FUZZ_CHECK(builder.findWord(w) < static_cast<int>(builder.getWordCount()));
  return 0;
}
