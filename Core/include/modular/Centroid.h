#ifndef VORTM_MODULAR_CENTROID_H
#define VORTM_MODULAR_CENTROID_H

#include <string>
#include <utility>
#include <vector>

#include "common/AutoPtr.h"
#include "common/Serializable.h"
#include "modular/Vocabulary.h"
#include "trainset/Label.h"
#include "utility/MySparseVector.h"

namespace vortm {
namespace modular {

// A linear multi-class model: one dense weight row and one bias per label.
// The score of a label is the dot product of the document with its row plus
// its bias. Read-only once loaded, so classify() may run on many threads.
class Centroid : public common::Serializable {
 public:
  Centroid();
  ~Centroid() override;

  bool writeSelf(common::ObjectWriter& writer) override;
  bool readSelf(common::ObjectReader& reader) override;

  // The best label; the empty label when there is none or the document does
  // not fit the rows.
  trainset::Label classify(utility::MySparseVector<double, int>& doc);
  // Adds the label scores to `scores`, which the caller passes empty.
  bool classify(utility::MySparseVector<double, int>& doc, std::vector<double>& scores);
  bool isValid();
  bool isConsistent(Centroid& other);
  void ensureNonNegative();
  void L2Normalize();
  // Caps the weight of each listed word at zero in the matching class.
  bool ensureZero(Vocabulary& vocabulary, std::vector<std::vector<std::string> >& words,
                  std::vector<trainset::Label>& labels);
  bool getTopWord(Vocabulary& vocabulary, std::vector<std::vector<std::pair<std::string, double> > >& out,
                  std::vector<trainset::Label>& labels);
  // Averages compatible centroids into this one.
  bool merge(std::vector<common::AutoPtr<Centroid> >& parts, bool normalize);
  bool loadFrom(const std::string& path);
  bool writeTo(const std::string& path);

  std::vector<std::vector<double> > weights;
  std::vector<double> biases;
  std::vector<trainset::Label> labels;
  unsigned long stamp;
  unsigned int sampleCount;
};

}  // namespace modular
}  // namespace vortm

#endif
