#include "platform/posix/FileBytes.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "platform/posix/TempConfigDirs.h"

namespace t4::posix {
namespace {

std::string Pattern(size_t size) {
  std::string bytes(size, '\0');
  for (size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 7 + i / 251);
  return bytes;
}

TEST(FileBytes, ReadsTheWholeFile) {
  test::TempConfigDirs dirs;
  struct Case {
    const char* what;
    std::string bytes;
  };
  const Case cases[] = {
      {"empty", ""},
      {"small", std::string("a\0b\r\n", 5)},
      {"one read step", Pattern(1 << 16)},
      {"several read steps", Pattern(300000)},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const std::string path = dirs.UserDir() + "/file";
    test::TempConfigDirs::WriteFile(path, c.bytes);
    std::string bytes = "left over";
    struct stat info {};
    EXPECT_EQ(FileBytes::Read(path, bytes, &info), 0);
    EXPECT_EQ(bytes, c.bytes);
    EXPECT_EQ(static_cast<size_t>(info.st_size), c.bytes.size());
    EXPECT_TRUE(S_ISREG(info.st_mode));
    EXPECT_EQ(FileBytes::ReadOrEmpty(path), c.bytes);
  }
}

TEST(FileBytes, WhatCannotBeReadGivesItsReason) {
  test::TempConfigDirs dirs;
  test::TempConfigDirs::WriteFile(dirs.UserDir() + "/file", "x");
  struct Case {
    const char* what;
    std::string path;
    int error;
  };
  const Case cases[] = {
      {"missing", dirs.UserDir() + "/missing", ENOENT},
      {"a folder", dirs.UserDir(), EISDIR},
      {"below a file", dirs.UserDir() + "/file/below", ENOTDIR},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    std::string bytes;
    EXPECT_EQ(FileBytes::Read(c.path, bytes), c.error);
    EXPECT_EQ(FileBytes::ReadOrEmpty(c.path), "");
  }
}

TEST(FileBytes, AnUnreadableFileIsPermissionDenied) {
  test::TempConfigDirs dirs;
  const std::string path = dirs.UserDir() + "/secret";
  test::TempConfigDirs::WriteFile(path, "x");
  ASSERT_EQ(::chmod(path.c_str(), 0), 0);
  if (::access(path.c_str(), R_OK) == 0) GTEST_SKIP() << "permissions do not bind this user (root)";
  std::string bytes;
  EXPECT_EQ(FileBytes::Read(path, bytes), EACCES);
  EXPECT_EQ(FileBytes::ReadOrEmpty(path), "");
}

}  // namespace
}  // namespace t4::posix
