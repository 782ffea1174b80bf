#include "platform/posix/Directories.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string>

#include "platform/posix/FolderView.h"
#include "platform/posix/TempConfigDirs.h"

namespace t4::posix {
namespace {

using test::FolderView;

TEST(Directories, MakesTheFolderAndItsParents) {
  test::TempConfigDirs dirs;
  const mode_t old = ::umask(022);
  struct Case {
    const char* what;
    std::string path;
    mode_t mode;
  };
  const Case cases[] = {
      {"nested", dirs.UserDir() + "/a/b/c", 0700},
      {"trailing separator", dirs.UserDir() + "/d/e/", 0755},
      {"doubled separator", dirs.UserDir() + "/f//g", 0700},
      {"there already", dirs.UserDir() + "/a/b", 0755},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(Directories::Make(c.path, c.mode), 0);
    EXPECT_TRUE(std::filesystem::is_directory(c.path));
  }
  ::umask(old);
  EXPECT_EQ(FolderView::ModeOf(dirs.UserDir() + "/a"), 0700u);
  EXPECT_EQ(FolderView::ModeOf(dirs.UserDir() + "/a/b/c"), 0700u);
  EXPECT_EQ(FolderView::ModeOf(dirs.UserDir() + "/d/e"), 0755u);
}

TEST(Directories, ModeLosesTheUmask) {
  test::TempConfigDirs dirs;
  const mode_t old = ::umask(027);
  EXPECT_EQ(Directories::Make(dirs.UserDir() + "/x", 0777), 0);
  ::umask(old);
  EXPECT_EQ(FolderView::ModeOf(dirs.UserDir() + "/x"), 0750u);
}

TEST(Directories, AFileInTheWayIsNotAFolder) {
  test::TempConfigDirs dirs;
  test::TempConfigDirs::WriteFile(dirs.UserDir() + "/file", "x");
  EXPECT_EQ(Directories::Make(dirs.UserDir() + "/file", 0700), ENOTDIR);
  EXPECT_EQ(Directories::Make(dirs.UserDir() + "/file/below", 0700), ENOTDIR);
  EXPECT_EQ(Directories::Make("", 0700), ENOENT);
}

TEST(Directories, AReadOnlyParentGivesItsReason) {
  test::TempConfigDirs dirs;
  const std::string parent = dirs.UserDir() + "/locked";
  ASSERT_EQ(Directories::Make(parent, 0700), 0);
  ASSERT_EQ(::chmod(parent.c_str(), 0500), 0);
  const bool binds = ::access(parent.c_str(), W_OK) != 0;
  if (binds) {
    EXPECT_EQ(Directories::Make(parent + "/a/b", 0700), EACCES);
    EXPECT_FALSE(std::filesystem::exists(parent + "/a"));
  }
  ::chmod(parent.c_str(), 0700);
  if (!binds) GTEST_SKIP() << "permissions do not bind this user (root)";
}

}  // namespace
}  // namespace t4::posix
