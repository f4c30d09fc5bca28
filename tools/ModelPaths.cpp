#include "ModelPaths.h"

#include <sys/stat.h>
#include <unistd.h>

namespace vorelin {
namespace cli {

namespace {
bool exists(const std::string& path) {
  struct stat st;
  return stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}
}  // namespace

std::string defaultModelConfig(const std::string& encoding) {
  const std::string name = encoding == "gbk" ? "default_gbk.xml" : "default_utf8.xml";
  // A program run from the build tree uses that tree's model, an installed
  // one the installed model.
  char self[4096];
  ssize_t n = readlink("/proc/self/exe", self, sizeof(self) - 1);
  std::string exe = n > 0 ? std::string(self, static_cast<size_t>(n)) : std::string();
  const std::string buildRoot = VORELIN_BUILD_ROOT;
  bool inBuildTree = !buildRoot.empty() && exe.compare(0, buildRoot.size(), buildRoot) == 0;
  const char* first = inBuildTree ? VORELIN_BUILD_MODEL_DIR : VORELIN_INSTALL_MODEL_DIR;
  const char* second = inBuildTree ? VORELIN_INSTALL_MODEL_DIR : VORELIN_BUILD_MODEL_DIR;
  for (const char* dir : {first, second}) {
    std::string path = std::string(dir) + "/" + name;
    if (exists(path)) return path;
  }
  return std::string();
}

}  // namespace cli
}  // namespace vorelin
