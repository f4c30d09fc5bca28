// Arbitrary bytes as the files of a convolutional builder: the first byte
// picks std_conv or dcnn, the rest is cut at its first 0x00 byte into the
// word vector file and the model file. A builder that configures must then
// give every document a vector of its feature count (or, for dcnn, none).
#include <cmath>
#include <cstring>

#include "FuzzSupport.h"
#include "analyzer/Token.h"
#include "configure/BasicParamParser.h"
#include "modular/DCNNDocVectorBuilder.h"
#include "modular/StdConvDocVectorBuilder.h"

using namespace vortm;
using namespace vortm::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static bool once = (silenceOutput(), true);
  (void)once;
  static const TempFile vecFile("cnn_vec"), modelFile("cnn_model");
  if (size < 1 || size > (64 << 10)) return 0;
  const bool dynamic = data[0] & 1;
  ++data;
  --size;
  const uint8_t* cut = static_cast<const uint8_t*>(std::memchr(data, 0, size));
  const size_t first = cut ? static_cast<size_t>(cut - data) : size, second = cut ? first + 1 : size;
  if (!vecFile.write(data, first) || !modelFile.write(data + second, size - second)) return 0;

  configure::BasicParamParser parser;
  common::AutoPtr<configure::Parameter> param;
  FUZZ_CHECK(parser.doParseFromText("<word_vec_file>" + vecFile.path + "</word_vec_file><model_file>" +
                                        modelFile.path + "</model_file>",
                                    param));
  modular::StdConvDocVectorBuilder conv;
  modular::DCNNDocVectorBuilder deep;
  modular::CNNDocVectorBuilder& builder = dynamic ? static_cast<modular::CNNDocVectorBuilder&>(deep) : conv;
  if (!builder.config(*param)) return 0;
  FUZZ_CHECK(builder.getWordDim() > 1 && builder.getFeatureCount() >= 3);
  // Known words by their first bytes, unknown and negated ones.
  std::vector<analyzer::Token> tokens;
  const char* terms[] = {"a", "b", "NOT_a", "zz", "0", "1"};
  for (int i = 0; i < 9; ++i) tokens.emplace_back(terms[(i * 5) % 6], i * 2, i * 2, analyzer::Token::TT_EN_WORD,
                                                  analyzer::Token::TG_PLAIN);
  utility::MySparseVector<double, int> vec;
  FUZZ_CHECK(builder.buildDocVec(tokens, vec));
  FUZZ_CHECK(vec.size() == builder.getFeatureCount() || (dynamic && vec.size() == 0));
  return 0;
}
