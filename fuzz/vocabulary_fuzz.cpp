// Arbitrary bytes as a saved vocabulary: a load either fails or gives a
// vocabulary whose ids index its records, which saves and loads to the same
// words.
#include "FuzzSupport.h"
#include "modular/Vocabulary.h"

using namespace vortm::fuzzing;
using vortm::modular::Vocabulary;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static bool once = (silenceOutput(), true);
  (void)once;
  static const TempFile file("vocabulary_load"), resaved("vocabulary_resave");
  if (size > (1 << 20) || !file.write(data, size)) return 0;
  Vocabulary vocabulary;
  vocabulary.setMinDf(size > 0 ? (data[0] & 3) : 0);
  if (!vocabulary.loadFrom(file.path)) return 0;
  FUZZ_CHECK(vocabulary.getWordIds().size() == static_cast<size_t>(vocabulary.size()));
  for (const auto& entry : vocabulary.getWordIds()) {
    FUZZ_CHECK(entry.second < static_cast<unsigned int>(vocabulary.size()));
    FUZZ_CHECK(vocabulary.getWordInfos()[entry.second].word == entry.first);
  }
  if (!vocabulary.writeTo(resaved.path)) return 0;
  Vocabulary again;
  // Saving drops what the save test rejects, so a reload may fail only when
  // nothing was left.
  if (again.loadFrom(resaved.path)) {
    FUZZ_CHECK(again.size() <= vocabulary.size());
    for (const auto& entry : again.getWordIds()) FUZZ_CHECK(vocabulary.getWordId(entry.first) >= 0);
  } else {
    FUZZ_CHECK(vocabulary.getWordCount() == 0);
  }
  return 0;
}
