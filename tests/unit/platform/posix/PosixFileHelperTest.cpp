#include "platform/posix/PosixFileHelper.h"

#include <dirent.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "platform/posix/TempConfigDirs.h"
#include "support/ErrorObject.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4 {
namespace {

std::u16string U(const std::string& s) {
  return Utf::FromUtf8(s);
}

int EntriesIn(const std::string& folder) {
  int n = 0;
  DIR* dir = ::opendir(folder.c_str());
  if (dir == nullptr) return -1;
  while (dirent* e = ::readdir(dir)) {
    const std::string name = e->d_name;
    if (name != "." && name != "..") ++n;
  }
  ::closedir(dir);
  return n;
}

TEST(PosixFileHelper, ReadBytesTakesFilesUpToTheLimit) {
  test::TempConfigDirs dirs;
  PosixFileHelper files;
  const std::string path = dirs.UserDir() + "/f";
  test::TempConfigDirs::WriteFile(path, std::string("a\0b", 3));
  struct Case {
    const char* what;
    size_t limit;
    bool read;
    std::string bytes;
  };
  const Case cases[] = {
      {"far below", 100, true, std::string("a\0b", 3)},
      {"exactly at", 3, true, std::string("a\0b", 3)},
      {"one above", 2, false, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    std::string bytes = "left over";
    EXPECT_EQ(files.ReadBytes(U(path), c.limit, bytes), c.read);
    EXPECT_EQ(bytes, c.bytes);
  }
}

TEST(PosixFileHelper, AHundredMebibyteFileIsRefusedWithoutBeingRead) {
  test::TempConfigDirs dirs;
  PosixFileHelper files;
  const std::string path = dirs.UserDir() + "/big";
  // Sparse: no disk space, and reading it would take 100 MiB of memory.
  test::TempConfigDirs::WriteFile(path, "");
  ASSERT_EQ(::truncate(path.c_str(), off_t{100} << 20), 0);
  std::string bytes;
  EXPECT_FALSE(files.ReadBytes(U(path), size_t{64} << 20, bytes));
  EXPECT_TRUE(bytes.empty());
  EXPECT_EQ(bytes.capacity() < 1024 * 1024, true);
}

TEST(PosixFileHelper, ADeviceThatNeverEndsIsReadOnlyToTheLimit) {
  PosixFileHelper files;
  std::string bytes;
  EXPECT_FALSE(files.ReadBytes(u"/dev/zero", 1 << 20, bytes));
  EXPECT_TRUE(bytes.empty());
}

TEST(PosixFileHelper, WhatCannotBeReadRaisesARunTimeErrorNamingTheFile) {
  test::TempConfigDirs dirs;
  PosixFileHelper files;
  struct Case {
    const char* what;
    std::string path;
    int32_t number;
  };
  const Case cases[] = {
      {"missing", dirs.UserDir() + "/missing.csv", RunTimeError::kPathFileAccessError},
      {"a folder", dirs.UserDir(), RunTimeError::kPathFileAccessError},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    std::string bytes;
    try {
      files.ReadBytes(U(c.path), 100, bytes);
      FAIL() << "no error";
    } catch (const Error& e) {
      EXPECT_EQ(e.Number(), c.number);
      EXPECT_NE(e.Description().find(U(c.path)), std::u16string::npos);
    }
  }
}

TEST(PosixFileHelper, CreateFolderMakesTheMissingParents) {
  test::TempConfigDirs dirs;
  PosixFileHelper files;
  const std::string deep = dirs.UserDir() + "/a/b/c";
  EXPECT_FALSE(files.FolderExists(U(deep)));
  files.CreateFolder(U(deep));
  EXPECT_TRUE(files.FolderExists(U(deep)));
  test::TempConfigDirs::WriteFile(dirs.UserDir() + "/file", "x");
  EXPECT_FALSE(files.FolderExists(U(dirs.UserDir() + "/file")));
  files.CreateFolder(U(dirs.UserDir() + "/file/below"));
  EXPECT_FALSE(files.FolderExists(U(dirs.UserDir() + "/file/below")));
}

TEST(PosixFileHelper, WriteBytesReplacesTheFileAndLeavesNothingElse) {
  test::TempConfigDirs dirs;
  PosixFileHelper files;
  const std::string folder = dirs.UserDir() + "/out";
  ::mkdir(folder.c_str(), 0700);
  const std::string path = folder + "/list.csv";
  files.WriteBytes(U(path), "old");
  files.WriteBytes(U(path), "new");
  std::string bytes;
  ASSERT_TRUE(files.ReadBytes(U(path), 100, bytes));
  EXPECT_EQ(bytes, "new");
  EXPECT_EQ(EntriesIn(folder), 1);
}

TEST(PosixFileHelper, AFailedWriteRaisesCreateFileAndLeavesTheOldFile) {
  test::TempConfigDirs dirs;
  PosixFileHelper files;
  const std::string path = dirs.UserDir() + "/list.csv";
  files.WriteBytes(U(path), "old");
  // A name the file system cannot take: the temporary file cannot be made.
  const std::string tooLong = dirs.UserDir() + "/" + std::string(300, 'x') + ".csv";
  struct Case {
    const char* what;
    std::string path;
  };
  const Case cases[] = {
      {"below a file", path + "/x.csv"},
      {"name too long", tooLong},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    try {
      files.WriteBytes(U(c.path), "new");
      FAIL() << "no error";
    } catch (const Error& e) {
      EXPECT_EQ(e.Number(), cmCreateFile);
      EXPECT_NE(e.Description().find(U(c.path)), std::u16string::npos);
    }
  }
  std::string bytes;
  ASSERT_TRUE(files.ReadBytes(U(path), 100, bytes));
  EXPECT_EQ(bytes, "old");
  EXPECT_EQ(EntriesIn(dirs.UserDir()), 1);
}

}  // namespace
}  // namespace t4
