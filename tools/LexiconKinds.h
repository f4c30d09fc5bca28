#ifndef VORELIN_TOOLS_LEXICONKINDS_H
#define VORELIN_TOOLS_LEXICONKINDS_H

#include "CommandLine.h"

namespace vorelin {
namespace cli {

// `vorelin lexicon` actions for weighted lexicons (word to weight).
int buildWeightedLexicon(const CommandLine& cl);
int dumpWeightedLexicon(const CommandLine& cl);

// The same for label lexicons (attribute and sentiment keys to values).
int buildLabelLexicon(const CommandLine& cl);
int dumpLabelLexicon(const CommandLine& cl);

}  // namespace cli
}  // namespace vorelin

#endif
