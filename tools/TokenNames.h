#ifndef VORELIN_TOOLS_TOKENNAMES_H
#define VORELIN_TOOLS_TOKENNAMES_H

#include <string>

namespace vorelin {
namespace cli {

// Names of token types and tags as users write them in word lists
// ("CH_WORD", "POSITIVE", ...); numbers without a name print as numbers.
std::string typeName(int type);
std::string tagName(int tag);

// Parses a type or tag given by name (with or without its TT_/TG_ prefix,
// any letter case) or by number 0..255. False when it is neither.
bool parseType(const std::string& text, int& type);
bool parseTag(const std::string& text, int& tag);

}  // namespace cli
}  // namespace vorelin

#endif
