#include "platform/posix/AtomicFile.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/posix/Directories.h"
#include "platform/posix/FileBytes.h"
#include "platform/posix/TempConfigDirs.h"
#include "support/Error.h"
#include "support/ErrorObject.h"
#include "support/RunTimeError.h"

namespace t4::posix {
namespace {

using Family = FileError::Family;

std::vector<std::string> Entries(const std::string& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

mode_t ModeOf(const std::string& path) {
  struct stat info {};
  EXPECT_EQ(::stat(path.c_str(), &info), 0) << path;
  return info.st_mode & 07777;
}

TEST(AtomicFile, ANewFileIsTheUsersOnly) {
  test::TempConfigDirs dirs;
  const mode_t old = ::umask(0);
  for (const Family family : {Family::kRunTime, Family::kCreateFile}) {
    SCOPED_TRACE(static_cast<int>(family));
    const std::string folder = dirs.UserDir() + "/new" + std::to_string(static_cast<int>(family));
    const std::string path = folder + "/sub/file";
    AtomicFile::Write(path, "bytes", family);
    EXPECT_EQ(FileBytes::ReadOrEmpty(path), "bytes");
    EXPECT_EQ(ModeOf(path), 0600u);
    EXPECT_EQ(ModeOf(folder), 0700u);  // missing folders are made private too
    EXPECT_EQ(Entries(folder + "/sub"), std::vector<std::string>{"file"});
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
  EXPECT_EQ(Entries(dirs.UserDir()), std::vector<std::string>{"file"});
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
  EXPECT_EQ(ModeOf(target), 0640u);
  // The temporary file was made next to the target, and is gone.
  EXPECT_EQ(Entries(dirs.UserDir() + "/data"), std::vector<std::string>{"target"});
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
    struct Case {
      Family family;
      int32_t number;
    };
    for (const Case& c : {Case{Family::kRunTime, RunTimeError::kPermissionDenied},
                          Case{Family::kCreateFile, cmCreateFile}}) {
      SCOPED_TRACE(c.number);
      try {
        AtomicFile::Write(path, "new", c.family);
        ADD_FAILURE() << "no error";
      } catch (const Error& e) {
        EXPECT_EQ(e.Number(), c.number);
        EXPECT_NE(std::string(e.what()).find(path), std::string::npos) << e.what();
      }
      EXPECT_EQ(FileBytes::ReadOrEmpty(path), "old");
      EXPECT_EQ(Entries(folder), std::vector<std::string>{"file"});
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
  struct rlimit old {};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &old), 0);
  struct rlimit small = old;
  small.rlim_cur = 64 * 1024;
  void (*oldHandler)(int) = ::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  int32_t number = 0;
  int32_t lastDllError = 0;
  try {
    AtomicFile::Write(path, std::string(1 << 20, 'x'), Family::kRunTime);
  } catch (const Error& e) {
    number = e.Number();
    lastDllError = e.LastDllError();
  }
  ::setrlimit(RLIMIT_FSIZE, &old);
  ::signal(SIGXFSZ, oldHandler);
  EXPECT_EQ(number, RunTimeError::kPathFileAccessError);
  EXPECT_EQ(lastDllError, EFBIG);
  EXPECT_EQ(FileBytes::ReadOrEmpty(path), "old");
  EXPECT_EQ(Entries(dirs.UserDir()), std::vector<std::string>{"file"});
}

TEST(AtomicFile, AFolderWhereTheFolderShouldBeIsAnError) {
  test::TempConfigDirs dirs;
  test::TempConfigDirs::WriteFile(dirs.UserDir() + "/plain", "a file, not a folder");
  const std::string path = dirs.UserDir() + "/plain/file";
  struct Case {
    Family family;
    int32_t number;
  };
  for (const Case& c : {Case{Family::kRunTime, RunTimeError::kPathFileAccessError},
                        Case{Family::kCreateFile, cmCreateFile}}) {
    SCOPED_TRACE(c.number);
    EXPECT_THROW(
        {
          try {
            AtomicFile::Write(path, "x", c.family);
          } catch (const Error& e) {
            EXPECT_EQ(e.Number(), c.number);
            throw;
          }
        },
        Error);
  }
  EXPECT_EQ(Entries(dirs.UserDir()), std::vector<std::string>{"plain"});
}

}  // namespace
}  // namespace t4::posix
