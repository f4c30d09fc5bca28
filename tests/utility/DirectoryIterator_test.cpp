#include "utility/DirectoryIterator.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "TestSupport.h"
#include "utility/Utility.h"

using vortm::common::AutoPtr;
using vortm::testing::TempDir;
using vortm::testing::writeFile;
using vortm::utility::DirectoryFilter;
using vortm::utility::LinuxDirectoryIterator;

namespace {

typedef std::set<std::pair<std::string, std::string> > Found;

Found walk(const std::string& root) {
  LinuxDirectoryIterator it(root, AutoPtr<DirectoryFilter>());
  Found found;
  while (it.hasNextNonDirFileInternal()) found.insert(std::make_pair(it.m_subDirName, it.m_curDir + it.m_fileName));
  // The walk stays over.
  EXPECT_FALSE(it.hasNextNonDirFileInternal());
  return found;
}

}  // namespace

TEST(DirectoryIteratorTest, WalksDepthFirstWithSubDirNames) {
  TempDir dir;
  const std::string root = dir.path();
  mkdir((root + "/a").c_str(), 0755);
  mkdir((root + "/a/b").c_str(), 0755);
  mkdir((root + "/c").c_str(), 0755);
  mkdir((root + "/a/empty").c_str(), 0755);
  writeFile(root + "/top.txt", "1");
  writeFile(root + "/a/mid.txt", "2");
  writeFile(root + "/a/b/deep.txt", "3");
  writeFile(root + "/c/side.txt", "4");

  Found expected = {{"", root + "/top.txt"},
                    {"a", root + "/a/mid.txt"},
                    {"a.b", root + "/a/b/deep.txt"},
                    {"c", root + "/c/side.txt"}};
  EXPECT_EQ(walk(root), expected);
  EXPECT_EQ(walk(root + "/"), expected);

  LinuxDirectoryIterator missing(root + "/nothing", AutoPtr<DirectoryFilter>());
  EXPECT_FALSE(missing.m_isOpen);
  EXPECT_FALSE(missing.hasNextNonDirFileInternal());
  LinuxDirectoryIterator onFile(root + "/top.txt", AutoPtr<DirectoryFilter>());
  EXPECT_FALSE(onFile.m_isOpen);

  // listFiles: one level, directories included, no path.
  std::vector<std::string> names = {"kept"};
  vortm::utility::Utility::listFiles(root, names);
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, std::vector<std::string>({"a", "c", "kept", "top.txt"}));
}
