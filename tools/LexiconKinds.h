#ifndef VORELIN_TOOLS_LEXICONKINDS_H
#define VORELIN_TOOLS_LEXICONKINDS_H

#include "CommandLine.h"

namespace vorelin {
namespace cli {

// `vorelin lexicon` actions for weighted lexicons (word to weight).
int buildWeightedLexicon(const CommandLine& cl);
int dumpWeightedLexicon(const CommandLine& cl);

}  // namespace cli
}  // namespace vorelin

#endif
