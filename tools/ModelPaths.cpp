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
  // A program run from the build tree uses that tree's model; an installed
  // one only the model installed beside it, found from its own folder.
  char self[4096];
  ssize_t n = readlink("/proc/self/exe", self, sizeof(self) - 1);
  std::string exe = n > 0 ? std::string(self, static_cast<size_t>(n)) : std::string();
  const std::string buildRoot = VORELIN_BUILD_ROOT;
  std::string dir;
  if (!buildRoot.empty() && exe.compare(0, buildRoot.size(), buildRoot) == 0) {
    dir = VORELIN_BUILD_MODEL_DIR;
  } else {
    std::string::size_type slash = exe.rfind('/');
    if (slash == std::string::npos) return std::string();
    dir = exe.substr(0, slash + 1) + VORELIN_MODEL_DIR_FROM_BIN;
  }
  std::string path = dir + "/" + name;
  return exists(path) ? path : std::string();
}

}  // namespace cli
}  // namespace vorelin
