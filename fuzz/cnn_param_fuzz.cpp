// Arbitrary bytes as the output-layer parameter file of the CNN classifier,
// over a fixed small network. A classifier that configures must score any
// text inside [-1, 1], or NaN when a huge value overflows the activation.
#include <cmath>

#include "FuzzSupport.h"
#include "application/CNNSentiClassifier.h"
#include "configure/BasicParamParser.h"

using namespace vortm;
using namespace vortm::fuzzing;

namespace {

void writeText(const TempFile& file, const std::string& text) {
  FUZZ_CHECK(file.write(reinterpret_cast<const uint8_t*>(text.data()), text.size()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static bool once = (silenceOutput(), true);
  (void)once;
  static const TempFile vecFile("cnnp_vec"), modelFile("cnnp_model"), paramFile("cnnp_param");
  static const bool written = (writeText(vecFile, "3 2\ngood 1 0\nbad 0 1\nfilm 0.5 0.5\n"),
                               writeText(modelFile, "1 2 3 1\n2\n1 0 0 1\n0 1 1 0\n0.1 -0.2\n1 0 1 0 1 -1\n0 0 0.5\n"),
                               true);
  (void)written;
  if (size > (16 << 10)) return 0;
  if (!paramFile.write(data, size)) return 0;
  configure::BasicParamParser parser;
  common::AutoPtr<configure::Parameter> param;
  FUZZ_CHECK(parser.doParseFromText(
      "<cnn_doc_vec_builder><identifier>std_conv</identifier><param><word_vec_file>" + vecFile.path +
          "</word_vec_file><model_file>" + modelFile.path +
          "</model_file></param></cnn_doc_vec_builder><text_analyzer><analyzer><encode>utf-8</encode><tokenizers>"
          "<tokenizer><identifier>basicTokenzier</identifier><param><encode>utf-8</encode></param></tokenizer>"
          "</tokenizers></analyzer></text_analyzer><param_file>" +
          paramFile.path + "</param_file>",
      param));
  application::CNNSentiClassifier classifier;
  if (!classifier.config(*param)) return 0;
  for (const char* text : {"good film", "bad", "", "film not bad at all"}) {
    double score = 2.0;
    FUZZ_CHECK(classifier.classify(text, score));
    FUZZ_CHECK(std::isnan(score) || (score >= -1.0 && score <= 1.0));
  }
  return 0;
}
