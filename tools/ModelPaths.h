#ifndef VORELIN_TOOLS_MODELPATHS_H
#define VORELIN_TOOLS_MODELPATHS_H

#include <string>

namespace vorelin {
namespace cli {

// The configuration of the shipped default model for an encoding ("utf-8"
// or "gbk"): the installed copy if there is one, else the one in the build
// tree. Empty when neither exists.
std::string defaultModelConfig(const std::string& encoding = "utf-8");

}  // namespace cli
}  // namespace vorelin

#endif
