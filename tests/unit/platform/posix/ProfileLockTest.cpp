#include "platform/posix/ProfileLock.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <filesystem>
#include <functional>

#include "ErrorNumber.h"
#include "platform/posix/PosixRegistryFile.h"
#include "platform/posix/TempConfigDirs.h"
#include "platform/posix/XmlCategoryStore.h"
#include "support/Error.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4 {
namespace {

using test::NumberOf;

TEST(ProfileLock, SecondDescriptorInTheSameProcessIsAnotherWriter) {
  test::TempConfigDirs dirs;
  dirs.SetEnv("TANDREL4_LOCK_TIMEOUT_MS", "50");
  const std::filesystem::path dir = dirs.UserDir();
  {
    const posix::ProfileLock first(dir);
    try {
      posix::ProfileLock second(dir);
      ADD_FAILURE() << "no error";
    } catch (const Error& e) {
      EXPECT_EQ(e.Number(), RunTimeError::kPermissionDenied);
      EXPECT_NE(Utf::ToUtf8(e.Description()).find(dir.string() + "/.lock"), std::string::npos);
    }
  }
  // Let go: the next writer gets it.
  EXPECT_NO_THROW(posix::ProfileLock again(dir));
  EXPECT_TRUE(std::filesystem::exists(dir / ".lock"));
}

TEST(ProfileLock, TimeoutFromTheEnvironment) {
  test::TempConfigDirs dirs;
  dirs.SetEnv("TANDREL4_LOCK_TIMEOUT_MS", nullptr);
  EXPECT_EQ(posix::ProfileLock::TimeoutMs(), posix::ProfileLock::kDefaultTimeoutMs);
  dirs.SetEnv("TANDREL4_LOCK_TIMEOUT_MS", "75");
  EXPECT_EQ(posix::ProfileLock::TimeoutMs(), 75);
  dirs.SetEnv("TANDREL4_LOCK_TIMEOUT_MS", "soon");
  EXPECT_EQ(posix::ProfileLock::TimeoutMs(), posix::ProfileLock::kDefaultTimeoutMs);
}

// The registry file and the XML category list wait for the same lock and
// write nothing without it.
TEST(ProfileLock, RegistryAndCategoryListWritersWaitForIt) {
  test::TempConfigDirs dirs;
  dirs.SetEnv("TANDREL4_LOCK_TIMEOUT_MS", "50");
  const std::filesystem::path dir = dirs.UserDir();
  const int held = ::open((dir / ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  ASSERT_GE(held, 0);
  ASSERT_EQ(::flock(held, LOCK_EX), 0);
  PosixRegistryFile registry((dir / "registry.reg").string());
  EXPECT_EQ(NumberOf([&] { registry.WriteValue(u"Software\\X", u"v", std::u16string(u"w")); }),
            RunTimeError::kPermissionDenied);
  posix::XmlCategoryStore list((dir / "categories.xml").string());
  list.Add({u"", u"Neu", 0, 0});
  EXPECT_EQ(NumberOf([&] { list.Commit(); }), RunTimeError::kPermissionDenied);
  EXPECT_FALSE(std::filesystem::exists(dir / "registry.reg"));
  EXPECT_FALSE(std::filesystem::exists(dir / "categories.xml"));
  ::close(held);
  registry.WriteValue(u"Software\\X", u"v", std::u16string(u"w"));
  list.Commit();
  EXPECT_TRUE(std::filesystem::exists(dir / "registry.reg"));
  EXPECT_TRUE(std::filesystem::exists(dir / "categories.xml"));
}

}  // namespace
}  // namespace t4
