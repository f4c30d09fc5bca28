#ifndef VORELIN_TOOLS_MODELPATHS_H
#define VORELIN_TOOLS_MODELPATHS_H

#include <string>

namespace vorelin {
namespace cli {

// The configuration of the shipped default model for an encoding ("utf-8"
// or "gbk"): the build tree's for a program run from the build tree, else
// the copy installed beside the program. Empty when that does not exist.
std::string defaultModelConfig(const std::string& encoding = "utf-8");

}  // namespace cli
}  // namespace vorelin

#endif
