#include "platform/posix/AtomicFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

#include "ErrorNumber.h"
#include "platform/posix/Directories.h"
#include "platform/posix/FileBytes.h"
#include "platform/posix/FileSizeLimit.h"
#include "platform/posix/FolderView.h"
#include "platform/posix/TempConfigDirs.h"
#include "support/Error.h"
#include "support/ErrorObject.h"
#include "support/RunTimeError.h"

namespace t4::posix {
namespace {

using Family = FileError::Family;
using test::FolderView;
using test::NumberOf;

// The error each family raises for one kind of failure.
struct Expected {
  Family family;
  int32_t number;
};

TEST(AtomicFile, ANewFileIsTheUsersOnly) {
  test::TempConfigDirs dirs;
  const mode_t old = ::umask(0);
  for (const Family family : {Family::kRunTime, Family::kCreateFile}) {
    SCOPED_TRACE(static_cast<int>(family));
    const std::string folder = dirs.UserDir() + "/new" + std::to_string(static_cast<int>(family));
    const std::string path = folder + "/sub/file";
    AtomicFile::Write(path, "bytes", family);
    EXPECT_EQ(FileBytes::ReadOrEmpty(path), "bytes");
    EXPECT_EQ(FolderView::ModeOf(path), 0600u);
    EXPECT_EQ(FolderView::ModeOf(folder), 0700u);  // missing folders are made private too
    EXPECT_EQ(FolderView::Names(folder + "/sub"), std::vector<std::string>{"file"});
  }
  ::umask(old);
}

TEST(AtomicFile, AFileThatExistsKeepsItsModeAndIsReplaced) {
  test::TempConfigDirs dirs;
  const std::string path = dirs.UserDir() + "/file";
  test::TempConfigDirs::WriteFile(path, "old bytes, longer than the new ones");
  for (const mode_t mode : {0644u, 0640u, 0400u}) {
    SCOPED_TRACE(mode);
    ASSERT_EQ(::chmod(path.c_str(), mode), 0);
    struct stat before {};
    ASSERT_EQ(::stat(path.c_str(), &before), 0);
    AtomicFile::Write(path, "new", Family::kCreateFile);
    struct stat after {};
    ASSERT_EQ(::stat(path.c_str(), &after), 0);
    EXPECT_NE(after.st_ino, before.st_ino);  // a new file renamed into place
    EXPECT_EQ(after.st_mode & 07777, mode);
    EXPECT_EQ(FileBytes::ReadOrEmpty(path), "new");
  }
  EXPECT_EQ(FolderView::Names(dirs.UserDir()), std::vector<std::string>{"file"});
}

TEST(AtomicFile, ALinkStaysALinkAndItsTargetIsReplaced) {
  test::TempConfigDirs dirs;
  const std::string target = dirs.UserDir() + "/data/target";
  const std::string link = dirs.UserDir() + "/link";
  ASSERT_EQ(Directories::Make(dirs.UserDir() + "/data", 0700), 0);
  test::TempConfigDirs::WriteFile(target, "old");
  ASSERT_EQ(::chmod(target.c_str(), 0640), 0);
  ASSERT_EQ(::symlink("data/target", link.c_str()), 0);
  EXPECT_EQ(AtomicFile::Target(link), std::filesystem::path(target));
  EXPECT_EQ(AtomicFile::Target(target), std::filesystem::path(target));
  AtomicFile::Write(link, "new", Family::kRunTime);
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  EXPECT_EQ(FileBytes::ReadOrEmpty(target), "new");
  EXPECT_EQ(FolderView::ModeOf(target), 0640u);
  // The temporary file was made next to the target, and is gone.
  EXPECT_EQ(FolderView::Names(dirs.UserDir() + "/data"), std::vector<std::string>{"target"});
}

TEST(AtomicFile, ALinkToNothingIsReplacedByTheFile) {
  test::TempConfigDirs dirs;
  const std::string link = dirs.UserDir() + "/link";
  ASSERT_EQ(::symlink("missing/target", link.c_str()), 0);
  AtomicFile::Write(link, "new", Family::kRunTime);
  EXPECT_FALSE(std::filesystem::is_symlink(link));
  EXPECT_EQ(FileBytes::ReadOrEmpty(link), "new");
}

TEST(AtomicFile, AReadOnlyFolderKeepsTheOldFile) {
  test::TempConfigDirs dirs;
  const std::string folder = dirs.UserDir() + "/ro";
  const std::string path = folder + "/file";
  ASSERT_EQ(Directories::Make(folder, 0700), 0);
  test::TempConfigDirs::WriteFile(path, "old");
  ASSERT_EQ(::chmod(folder.c_str(), 0500), 0);
  const bool binds = ::access(folder.c_str(), W_OK) != 0;
  if (binds) {
    for (const Expected& c : {Expected{Family::kRunTime, RunTimeError::kPermissionDenied},
                              Expected{Family::kCreateFile, cmCreateFile}}) {
      SCOPED_TRACE(c.number);
      try {
        AtomicFile::Write(path, "new", c.family);
        ADD_FAILURE() << "no error";
      } catch (const Error& e) {
        EXPECT_EQ(e.Number(), c.number);
        EXPECT_NE(std::string(e.what()).find(path), std::string::npos) << e.what();
      }
      EXPECT_EQ(FileBytes::ReadOrEmpty(path), "old");
      EXPECT_EQ(FolderView::Names(folder), std::vector<std::string>{"file"});
    }
  }
  ::chmod(folder.c_str(), 0700);
  if (!binds) GTEST_SKIP() << "permissions do not bind this user (root)";
}

// A write that breaks off half way (the file size limit) works for every
// user, root included.
TEST(AtomicFile, AWriteThatBreaksOffKeepsTheOldFile) {
  test::TempConfigDirs dirs;
  const std::string path = dirs.UserDir() + "/file";
  test::TempConfigDirs::WriteFile(path, "old");
  int32_t lastDllError = 0;
  {
    const test::FileSizeLimit limit(64 * 1024);
    try {
      AtomicFile::Write(path, std::string(1 << 20, 'x'), Family::kRunTime);
      ADD_FAILURE() << "no error";
    } catch (const Error& e) {
      EXPECT_EQ(e.Number(), RunTimeError::kPathFileAccessError);
      lastDllError = e.LastDllError();
    }
  }
  EXPECT_EQ(lastDllError, EFBIG);
  EXPECT_EQ(FileBytes::ReadOrEmpty(path), "old");
  EXPECT_EQ(FolderView::Names(dirs.UserDir()), std::vector<std::string>{"file"});
}

TEST(AtomicFile, AFileWhereTheFolderShouldBeIsAnError) {
  test::TempConfigDirs dirs;
  test::TempConfigDirs::WriteFile(dirs.UserDir() + "/plain", "a file, not a folder");
  const std::string path = dirs.UserDir() + "/plain/file";
  for (const Expected& c : {Expected{Family::kRunTime, RunTimeError::kPathFileAccessError},
                            Expected{Family::kCreateFile, cmCreateFile}}) {
    SCOPED_TRACE(c.number);
    EXPECT_EQ(NumberOf([&] { AtomicFile::Write(path, "x", c.family); }), c.number);
  }
  EXPECT_EQ(FolderView::Names(dirs.UserDir()), std::vector<std::string>{"plain"});
}

}  // namespace
}  // namespace t4::posix
