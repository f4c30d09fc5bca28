#include "utility/DirectoryIterator.h"

#include <sys/stat.h>
#include <sys/types.h>

#include <cstring>

namespace vortm {
namespace utility {

DirectoryIterator::DirectoryIterator(const std::string& root, common::AutoPtr<DirectoryFilter> filter)
    : m_filter(filter), m_isOpen(false), m_curDir(root) {
  m_dirPathStack.push_back(root);
}

DirectoryIterator::~DirectoryIterator() {}

LinuxDirectoryIterator::LinuxDirectoryIterator(const std::string& root, common::AutoPtr<DirectoryFilter> filter)
    : DirectoryIterator(root, filter), m_dirHandle(nullptr) {
  m_separator = "/";
  // An empty root would become "/" and walk the whole file system.
  if (root.empty()) return;
  if (m_curDir.size() < m_separator.size() ||
      m_curDir.compare(m_curDir.size() - m_separator.size(), m_separator.size(), m_separator) != 0) {
    m_curDir += m_separator;
  }
  struct stat info;
  if (stat(m_curDir.c_str(), &info) != 0 || !S_ISDIR(info.st_mode)) return;
  DIR* handle = opendir(m_curDir.c_str());
  if (handle == nullptr) return;
  m_dirHandle = handle;
  m_dirHandleStack.push_back(handle);
  m_dirPathStack.push_back(m_curDir);
  m_isOpen = true;
}

LinuxDirectoryIterator::~LinuxDirectoryIterator() {
  for (DIR* handle : m_dirHandleStack) closedir(handle);
  m_dirHandleStack.clear();
  m_dirHandle = nullptr;
}

bool LinuxDirectoryIterator::hasNextNonDirFileInternal() {
  if (!m_isOpen) return false;
  while (true) {
    while (m_dirHandle != nullptr) {
      struct dirent* entry = readdir(m_dirHandle);
      if (entry == nullptr) break;
      if (std::strcmp(entry->d_name, ".") == 0 || std::strcmp(entry->d_name, "..") == 0) continue;
      std::string path = m_curDir + entry->d_name;
      struct stat info;
      if (stat(path.c_str(), &info) != 0) continue;
      if (!S_ISDIR(info.st_mode)) {
        m_fileName = entry->d_name;
        m_subDirName.clear();
        for (std::vector<std::string>::size_type i = 0; i < m_subDirNames.size(); ++i) {
          if (i > 0) m_subDirName += ".";
          m_subDirName += m_subDirNames[i];
        }
        return true;
      }
      // Depth first: the sub-directory is finished before the rest of its parent.
      DIR* sub = opendir(path.c_str());
      if (sub == nullptr) continue;
      std::string name = entry->d_name;
      m_dirHandle = sub;
      m_curDir = path + m_separator;
      m_dirHandleStack.push_back(sub);
      m_dirPathStack.push_back(m_curDir);
      m_subDirNames.push_back(name);
    }
    // The current directory is exhausted: go back to its parent.
    if (m_dirHandleStack.empty()) return false;
    closedir(m_dirHandleStack.back());
    m_dirHandleStack.pop_back();
    if (!m_dirPathStack.empty()) m_dirPathStack.pop_back();
    if (!m_subDirNames.empty()) m_subDirNames.pop_back();
    m_dirHandle = nullptr;
    m_curDir.clear();
    if (m_dirHandleStack.empty()) return false;
    m_dirHandle = m_dirHandleStack.back();
    m_curDir = m_dirPathStack.back();
  }
}

}  // namespace utility
}  // namespace vortm
