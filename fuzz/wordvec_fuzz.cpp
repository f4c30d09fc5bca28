// Arbitrary bytes as a word vector file: config either fails or gives a
// builder whose document vectors are empty or exactly as wide as the
// embeddings, with finite values.
#include "WordVecFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  vortm::utility::MySparseVector<double, int> vector;
  bool configured = false;
  vortm::fuzzing::fuzzWordFileBuilder("word_vec_doc_vec_builder", "word_vec_file", data, size, vector, configured);
  return 0;
}
