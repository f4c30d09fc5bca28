#ifndef VORELIN_TOOLS_CONFIGCHECK_H
#define VORELIN_TOOLS_CONFIGCHECK_H

#include <string>
#include <vector>

namespace vorelin {
namespace cli {

// What the tools need to know of a configuration besides the classifier.
struct ConfigInfo {
  std::string encoding = "utf-8";        // of the first member's analyzer
  std::vector<std::string> members;      // identifiers, in order
};

// Reads the configuration the way the library will and warns on standard
// error, naming the file and the key, about what the library accepts
// silently but that spoils every score: a number that is not one, a number
// without its type, an unknown identifier, a lexicon scorer without its
// position weighter. Prints "cannot open FILE: reason" and returns false
// when the file cannot be read.
bool checkConfig(const std::string& command, const std::string& path, ConfigInfo& info);

}  // namespace cli
}  // namespace vorelin

#endif
