#ifndef VORELIN_TOOLS_TARGETCLASSIFY_H
#define VORELIN_TOOLS_TARGETCLASSIFY_H

#include <string>

namespace vorelin {
namespace cli {

// True when a classify command line asks for target-aware scoring.
bool wantsTargets(int argc, char** argv);
int runTargetClassify(int argc, char** argv);
// The shipped target-aware configuration, or empty.
std::string defaultTargetConfig();

}  // namespace cli
}  // namespace vorelin

#endif
