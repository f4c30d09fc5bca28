// Arbitrary bytes as the two language-model files of the segmenter: the
// input is cut at its first 0x00 byte into the word-vector file and the
// output-layer file. Whatever loads must then segment a fixed text sanely.
#include <cstring>
#include <map>

#include "FuzzSupport.h"
#include "analyzer/LMBasedMatchTrieDict.h"

using namespace vortm::analyzer;
using namespace vortm::fuzzing;

namespace {

// Words that make several chunks tie on length, so that the model is asked;
// the seeds name the same words.
const char* const kWords[] = {"研究", "研究生", "生命", "起源", "命", "a", "ab", "bc", "c", "de"};
const std::string kText = "他研究生命起源abcde研究生c";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static bool once = (silenceOutput(), true);
  (void)once;
  static std::vector<unsigned int> ref =
      forwardRefs("basicUTF8Lexer", kText.data(), static_cast<unsigned int>(kText.size()));
  static const TempFile vecFile("lmmodel_vec"), netFile("lmmodel_net");
  if (size > (64 << 10)) return 0;
  const uint8_t* cut = static_cast<const uint8_t*>(std::memchr(data, 0, size));
  const size_t first = cut ? static_cast<size_t>(cut - data) : size, second = cut ? first + 1 : size;
  if (!vecFile.write(data, first) || !netFile.write(data + second, size - second)) return 0;

  typedef LMBasedMatchTrieDict<unsigned int> Model;
  Model model("basicUTF8Lexer");
  for (const char* w : kWords) model.insert(w, 0x0206);
  // The loader alone: rows of the dimension, ids within them; a failure
  // leaves its outputs empty.
  int dimension = 0;
  std::vector<std::vector<double> > rows;
  std::map<std::string, unsigned int> ids;
  if (model.loadWordvec(vecFile.path, dimension, rows, ids)) {
    FUZZ_CHECK(dimension > 1);
    FUZZ_CHECK(ids.size() <= rows.size());
    for (const auto& row : rows) FUZZ_CHECK(row.size() == static_cast<size_t>(dimension));
    for (const auto& entry : ids) FUZZ_CHECK(entry.second < rows.size());
  } else {
    FUZZ_CHECK(rows.empty() && ids.empty());
  }
  // The whole model: segments the text into tiling tokens, or is left empty.
  if (model.init(vecFile.path, netFile.path)) {
    FUZZ_CHECK(model.getDimension() > 1);
    TokenBuffer out;
    FUZZ_CHECK(model.match(kText.data(), static_cast<unsigned int>(kText.size()), ref.data(), out, 5));
    checkTiling(out, kText.data(), kText.size(), 5);
  } else {
    FUZZ_CHECK(model.getWordCount() == 0);
  }
  return 0;
}
