// Arbitrary bytes as a word expansion file: the expanded vector stays within
// the vocabulary, finite, and of unit length unless it is all but zero.
#include "WordVecFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  vortm::utility::MySparseVector<double, int> vector;
  bool configured = false;
  vortm::fuzzing::fuzzWordFileBuilder("word_expand_doc_vec_builder", "word_expand_file", data, size, vector,
                                      configured);
  double squares = 0.0;
  for (int i = 0; i < vector.size(); ++i) {
    double value = *vector.getIdValuePairByIndex(i).second;
    squares += value * value;
  }
  FUZZ_CHECK(squares <= 1e-05 || std::fabs(squares - 1.0) < 1e-6);
  return 0;
}
