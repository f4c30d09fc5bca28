#ifndef VORELIN_TOOLS_GBKCONVERTER_H
#define VORELIN_TOOLS_GBKCONVERTER_H

#include "TextEncoding.h"

namespace vorelin {
namespace cli {

// Converts words between UTF-8, the encoding of our lists, and GBK; false for
// a word with a character that the target encoding lacks.
class GbkConverter : public TextConverter {
 public:
  explicit GbkConverter(bool toGbk = true)
      : TextConverter(toGbk ? "GBK" : "UTF-8", toGbk ? "UTF-8" : "GBK") {}
};

}  // namespace cli
}  // namespace vorelin

#endif
