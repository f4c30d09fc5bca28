#ifndef VORTM_UTILITY_DIRECTORYITERATOR_H
#define VORTM_UTILITY_DIRECTORYITERATOR_H

#include <dirent.h>

#include <deque>
#include <string>
#include <vector>

#include "common/AutoPtr.h"

namespace vortm {
namespace utility {

// Decides which files of a walk are skipped.
class DirectoryFilter {
 public:
  virtual ~DirectoryFilter() {}
  // True means the file `fileName` in `dirPath` is to be skipped.
  virtual bool filter(const std::string& dirPath, const std::string& fileName) = 0;
};

// Depth-first walk over the regular files below a root directory. The fields
// are read directly by the corpus reader: the file found is m_curDir followed
// by m_fileName.
class DirectoryIterator {
 public:
  DirectoryIterator(const std::string& root, common::AutoPtr<DirectoryFilter> filter);
  virtual ~DirectoryIterator();
  // Moves to the next regular file; false when the walk is over.
  virtual bool hasNextNonDirFileInternal() = 0;

  common::AutoPtr<DirectoryFilter> m_filter;
  bool m_isOpen;
  std::string m_curDir;
  std::string m_fileName;
  std::string m_subDirName;
  std::deque<std::string> m_dirPathStack;
  std::vector<std::string> m_subDirNames;
  std::string m_separator;
};

class LinuxDirectoryIterator : public DirectoryIterator {
 public:
  LinuxDirectoryIterator(const std::string& root, common::AutoPtr<DirectoryFilter> filter);
  virtual ~LinuxDirectoryIterator();

  bool hasNextNonDirFileInternal() override;

  DIR* m_dirHandle;
  std::deque<DIR*> m_dirHandleStack;
};

}  // namespace utility
}  // namespace vortm

#endif
