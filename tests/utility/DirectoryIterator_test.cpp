#include "utility/DirectoryIterator.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <set>
#include <string>
#include <vector>

#include "TestSupport.h"
#include "utility/Utility.h"

using vortm::utility::LinuxDirectoryIterator;

static const vortm::common::AutoPtr<vortm::utility::DirectoryFilter> noFilter;

TEST(DirectoryIteratorTest, WalksDepthFirstWithSubDirNames) {
  vortm::testing::TempDir dir;
  const std::string root = dir.path();
  for (const char* sub : {"/a", "/a/b", "/a/empty", "/c"}) mkdir((root + sub).c_str(), 0755);
  for (auto f : {"/top.txt", "/a/mid.txt", "/a/b/deep.txt", "/c/side.txt"}) vortm::testing::writeFile(root + f, "x");
  // Each file with the dotted name of its sub-directory; a trailing slash on the root changes nothing.
  typedef std::set<std::pair<std::string, std::string> > Found;
  const Found expected = {{"", root + "/top.txt"}, {"a", root + "/a/mid.txt"}, {"a.b", root + "/a/b/deep.txt"},
                          {"c", root + "/c/side.txt"}};
  for (const std::string& start : {root, root + "/"}) {
    LinuxDirectoryIterator it(start, noFilter);
    Found found;
    while (it.hasNextNonDirFileInternal()) found.insert(std::make_pair(it.m_subDirName, it.m_curDir + it.m_fileName));
    EXPECT_FALSE(it.hasNextNonDirFileInternal());  // the walk stays over
    EXPECT_EQ(expected, found) << start;
  }
  LinuxDirectoryIterator missing(root + "/nothing", noFilter);
  EXPECT_FALSE(missing.m_isOpen || missing.hasNextNonDirFileInternal());
  EXPECT_FALSE(LinuxDirectoryIterator(root + "/top.txt", noFilter).m_isOpen);

  // listFiles: one level, directories included, no path, appended.
  std::vector<std::string> names = {"kept"};
  vortm::utility::Utility::listFiles(root, names);
  EXPECT_EQ(std::multiset<std::string>(names.begin(), names.end()),
            std::multiset<std::string>({"a", "c", "kept", "top.txt"}));
}
