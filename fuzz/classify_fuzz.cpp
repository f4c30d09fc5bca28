// Arbitrary bytes through Senti_Classify_Perform with the shipped default
// model, in UTF-8 or GBK as the first byte chooses. Every non-empty text must
// be classified, with a finite score inside the model's range: each member
// scores within -1 to 1, so the sum of the member weights bounds the whole.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "FuzzSupport.h"
#include "vorelin.h"

namespace {

// The model folder of a build with the tools; VORELIN_FUZZ_MODEL_DIR wins.
std::string modelPath(const char* file) {
  const char* dir = std::getenv("VORELIN_FUZZ_MODEL_DIR");
  return std::string(dir ? dir : VORELIN_FUZZ_MODEL_DIR) + "/" + file;
}

// The sum of the magnitudes of the members' weights in a configuration.
double scoreBound(const char* file) {
  std::ifstream in(modelPath(file));
  std::stringstream xml;
  xml << in.rdbuf();
  const std::string text = xml.str();
  double bound = 0.0;
  for (size_t at = text.find("<number_weight"); at != std::string::npos; at = text.find("<number_weight", at + 1))
    bound += std::fabs(std::atof(text.c_str() + text.find('>', at) + 1));
  return bound;
}

void* loadModel(const char* file) {
  const std::string path = modelPath(file);
  void* handle = nullptr;
  if (!Senti_Classifier_Init(path.c_str(), &handle)) {
    std::fprintf(stderr, "cannot load the default model %s (set VORELIN_FUZZ_MODEL_DIR)\n", path.c_str());
    std::abort();
  }
  return handle;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static bool quiet = (vortm::fuzzing::silenceOutput(), true);
  static void* const utf8 = loadModel("default_utf8.xml");
  static void* const gbk = loadModel("default_gbk.xml");
  static const double utf8Bound = scoreBound("default_utf8.xml");
  static const double gbkBound = scoreBound("default_gbk.xml");
  (void)quiet;
  if (size == 0) return 0;
  void* handle = data[0] & 1 ? gbk : utf8;
  // The text ends at its first zero byte, as a C string does.
  const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
  double score = 7.0;
  const int ok = Senti_Classify_Perform(handle, text.c_str(), &score);
  if (text.c_str()[0] == 0) {
    FUZZ_CHECK(ok == 0 && score == 7.0);
  } else {
    FUZZ_CHECK(ok == 1);
    const double bound = data[0] & 1 ? gbkBound : utf8Bound;
    FUZZ_CHECK(bound >= 1.0 && std::isfinite(score) && std::fabs(score) <= bound);
  }
  return 0;
}
