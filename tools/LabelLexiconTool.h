#ifndef VORELIN_TOOLS_LABELLEXICONTOOL_H
#define VORELIN_TOOLS_LABELLEXICONTOOL_H

#include "CommandLine.h"

namespace vorelin {
namespace cli {

// The label lexicon of the label scorer: "key<TAB>value" lists compiled to
// the saved file, and a saved file printed back as such a list.
int buildLabelLexicon(const CommandLine& cl);
int dumpLabelLexicon(const CommandLine& cl);

}  // namespace cli
}  // namespace vorelin

#endif
