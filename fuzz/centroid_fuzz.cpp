// Arbitrary bytes as a saved centroid: a load either fails or gives rows of
// the announced shape that classify any fitting document and save and load
// to the same model.
#include "FuzzSupport.h"
#include "modular/Centroid.h"

using namespace vortm::fuzzing;
using vortm::modular::Centroid;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static bool once = (silenceOutput(), true);
  (void)once;
  static const TempFile file("centroid_load"), resaved("centroid_resave");
  if (size > (1 << 20) || !file.write(data, size)) return 0;
  Centroid centroid;
  if (!centroid.loadFrom(file.path)) return 0;
  FUZZ_CHECK(centroid.labels.size() >= 2);
  FUZZ_CHECK(centroid.weights.size() == centroid.labels.size());
  FUZZ_CHECK(centroid.biases.size() == centroid.labels.size());
  size_t dim = centroid.weights[0].size();
  for (const auto& row : centroid.weights) FUZZ_CHECK(row.size() == dim && dim > 0);

  vortm::utility::MySparseVector<double, int> doc;
  doc[0] = 1.0;
  doc[static_cast<int>(dim - 1)] = 0.5;
  std::vector<double> scores;
  FUZZ_CHECK(centroid.classify(doc, scores));
  FUZZ_CHECK(scores.size() == centroid.labels.size());
  centroid.classify(doc);
  doc[static_cast<int>(dim)] = 1.0;  // beyond the rows
  scores.clear();
  FUZZ_CHECK(!centroid.classify(doc, scores));

  FUZZ_CHECK(centroid.writeTo(resaved.path));
  Centroid again;
  FUZZ_CHECK(again.loadFrom(resaved.path));
  FUZZ_CHECK(again.labels.size() == centroid.labels.size() && again.weights[0].size() == dim);
  return 0;
}
