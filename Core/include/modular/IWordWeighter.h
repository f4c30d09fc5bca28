#ifndef VORTM_MODULAR_IWORDWEIGHTER_H
#define VORTM_MODULAR_IWORDWEIGHTER_H

#include "modular/Vocabulary.h"

namespace vortm {
namespace modular {

// Turns a word's count in one document into its weight. Weighters hold no
// state. Held through AutoPtr, hence the virtual destructor.
class IWordWeighter {
 public:
  virtual ~IWordWeighter() {}
  virtual double weighting(Vocabulary& vocabulary, WordInfo& info, double frequency) = 0;
};

// count times idf
class TFIDFWordWeighter : public IWordWeighter {
 public:
  double weighting(Vocabulary& vocabulary, WordInfo& info, double frequency) override;
};

// presence only
class BoolWordWeighter : public IWordWeighter {
 public:
  double weighting(Vocabulary& vocabulary, WordInfo& info, double frequency) override;
};

// Bose-Einstein weight from the word's corpus frequency
class Bo1WordWeighter : public IWordWeighter {
 public:
  double weighting(Vocabulary& vocabulary, WordInfo& info, double frequency) override;
};

}  // namespace modular
}  // namespace vortm

#endif
