// Arbitrary bytes as a saved label lexicon: the load fails or succeeds
// cleanly, a forged count allocates nothing, and what loaded saves and loads
// back unchanged.
#include <cstring>
#include <map>

#include "FuzzSupport.h"
#include "modular/SentiLabelSentiScorer.h"
#include "utility/BufferedFileReader.h"
#include "utility/BufferedFileWriter.h"

using namespace vortm;
using namespace vortm::fuzzing;
using modular::SentiLabelSentiScorer;

namespace {

bool sameBits(double a, double b) { return std::memcmp(&a, &b, sizeof(double)) == 0; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static bool once = (silenceOutput(), true);
  (void)once;
  static const TempFile file("labellex_load"), resaved("labellex_resave");
  if (size > (1 << 20) || !file.write(data, size)) return 0;
  SentiLabelSentiScorer scorer;
  if (!scorer.loadSentiLabelLexcion(file.path)) return 0;
  const std::map<std::string, double>& loaded = scorer.lexcion().entries();
  {
    utility::BufferedFileWriter writer(resaved.path, true);
    FUZZ_CHECK(scorer.lexcion().writeSelf(writer));
    FUZZ_CHECK(writer.close());
  }
  SentiLabelSentiScorer::SentiLabelLexcion again;
  utility::BufferedFileReader reader(resaved.path, true);
  FUZZ_CHECK(again.readSelf(reader));
  FUZZ_CHECK(again.entries().size() == loaded.size());
  auto it = again.entries().begin();
  for (const auto& entry : loaded) {
    FUZZ_CHECK(it->first == entry.first && sameBits(it->second, entry.second));
    ++it;
  }
  return 0;
}
