#include "platform/posix/StagedFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string>

#include "platform/posix/FileBytes.h"
#include "platform/posix/TempConfigDirs.h"

namespace t4::posix {
namespace {

TEST(StagedFile, IsRemovedUnlessPlaced) {
  test::TempConfigDirs dirs;
  const std::string folder = dirs.UserDir();
  std::string kept;
  for (const bool place : {false, true}) {
    SCOPED_TRACE(place);
    std::string name;
    {
      StagedFile staged;
      ASSERT_EQ(staged.Create(folder, ".x."), 0);
      name = staged.Path();
      EXPECT_EQ(std::filesystem::path(name).parent_path(), std::filesystem::path(folder));
      EXPECT_EQ(std::filesystem::path(name).filename().string().rfind(".x.", 0), 0u);
      EXPECT_EQ(staged.Fill("bytes", 0640), 0);
      EXPECT_EQ(FileBytes::ReadOrEmpty(name), "bytes");
      struct stat info {};
      ASSERT_EQ(::stat(name.c_str(), &info), 0);
      EXPECT_EQ(info.st_mode & 07777, 0640u);
      if (place) {
        ASSERT_EQ(std::rename(name.c_str(), (folder + "/placed").c_str()), 0);
        staged.Placed();
      }
    }
    EXPECT_FALSE(std::filesystem::exists(name));
  }
  EXPECT_EQ(FileBytes::ReadOrEmpty(folder + "/placed"), "bytes");
}

TEST(StagedFile, AMissingFolderGivesItsReason) {
  test::TempConfigDirs dirs;
  StagedFile staged;
  EXPECT_EQ(staged.Create(dirs.UserDir() + "/missing", ".x."), ENOENT);
}

TEST(StagedFile, UnfilledItIsRemovedToo) {
  test::TempConfigDirs dirs;
  std::string name;
  {
    StagedFile staged;
    ASSERT_EQ(staged.Create(dirs.UserDir(), ".y."), 0);
    name = staged.Path();
    EXPECT_TRUE(std::filesystem::exists(name));
  }
  EXPECT_FALSE(std::filesystem::exists(name));
}

}  // namespace
}  // namespace t4::posix
