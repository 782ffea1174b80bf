#include <gtest/gtest.h>

#include <filesystem>

#include "IniCases.h"
#include "platform/posix/IniFileReader.h"
#include "platform/posix/TempConfigDirs.h"
#include "support/FileLength.h"
#include "support/IniFile.h"
#include "support/ProductPaths.h"
#include "support/SpecialFolders.h"
#include "support/Utf.h"

namespace t4 {
namespace {

TEST(IniFileReader, Rules) {
  const std::u16string text = Utf::FromUtf8(test::kIniText);
  for (const test::IniCase& c : test::kIniCases) {
    SCOPED_TRACE(Utf::ToUtf8(std::u16string(c.section) + u"/" + c.key));
    EXPECT_EQ(IniFileReader::Lookup(text, c.section, c.key), c.value);
  }
}

TEST(IniFileReader, ValuesAreCutTo254Characters) {
  const std::u16string text = u"[s]\nk=" + std::u16string(300, u'x') + u"\n";
  EXPECT_EQ(IniFileReader::Lookup(text, u"s", u"k").size(), 254u);
}

TEST(IniFileReader, DecodesUtf8AndUtf16) {
  EXPECT_EQ(IniFileReader::Decode("\xEF\xBB\xBFk=\xC3\xA4"), u"k=\u00e4");
  EXPECT_EQ(IniFileReader::Decode(std::string("\xFF\xFEk\0=\0", 6)), u"k=");
}

TEST(IniFile, MissingFileGivesEmpty) {
  test::TempConfigDirs dirs;
  EXPECT_EQ(
      IniFile::GetIniValue(Utf::FromUtf8(dirs.CommonDir() + "/none.ini"), u"default", u"ChunkSize"),
      u"");
}

TEST(IniFile, ReadsAFile) {
  test::TempConfigDirs dirs;
  const std::string path = dirs.CommonDir() + "/a.ini";
  test::TempConfigDirs::WriteFile(path, "[default]\nChunkSize=250\n");
  EXPECT_EQ(IniFile::GetIniValue(Utf::FromUtf8(path), u"default", u"ChunkSize"), u"250");
  EXPECT_EQ(IniFile::GetIniValue(Utf::FromUtf8(path), u"default", u"Other"), u"");
  EXPECT_EQ(IniFile::GetIniValue(Utf::FromUtf8(path), u"x", u"ChunkSize"), u"");
}

TEST(SpecialFolders, FoldersComeFromTheXdgVariables) {
  test::TempConfigDirs dirs;
  EXPECT_EQ(Utf::ToUtf8(SpecialFolders::GetSpecialFolder(35, false)), dirs.CommonDir());
  EXPECT_EQ(Utf::ToUtf8(SpecialFolders::GetSpecialFolder(26, false)), dirs.UserDir());
  EXPECT_EQ(SpecialFolders::GetSpecialFolder(5, false), u"");  // unknown here
  EXPECT_EQ(Utf::ToUtf8(SpecialFolders::GetSettingsPath()),
            dirs.CommonDir() + "/Quorvane/Kolvane/");
}

TEST(SpecialFolders, DefaultsWithoutTheVariables) {
  test::TempConfigDirs dirs;
  unsetenv("XDG_CONFIG_DIRS");
  unsetenv("XDG_CONFIG_HOME");
  EXPECT_EQ(SpecialFolders::GetSpecialFolder(35, false), u"/etc/xdg");
  const char* home = getenv("HOME");
  if (home != nullptr && *home == '/') {
    EXPECT_EQ(Utf::ToUtf8(SpecialFolders::GetSpecialFolder(26, false)),
              std::string(home) + "/.config");
  }
  setenv("XDG_CONFIG_DIRS", "relative/path", 1);
  EXPECT_EQ(SpecialFolders::GetSpecialFolder(35, false), u"/etc/xdg");
}

TEST(SpecialFolders, TrailingSlashIsDroppedAndCreateMakesTheFolder) {
  test::TempConfigDirs dirs;
  const std::string nested = dirs.UserDir() + "/a/b/";
  setenv("XDG_CONFIG_HOME", nested.c_str(), 1);
  EXPECT_EQ(Utf::ToUtf8(SpecialFolders::GetSpecialFolder(26, false)), dirs.UserDir() + "/a/b");
  EXPECT_FALSE(std::filesystem::exists(dirs.UserDir() + "/a/b"));
  SpecialFolders::GetSpecialFolder(26, true);
  EXPECT_TRUE(std::filesystem::is_directory(dirs.UserDir() + "/a/b"));
}

TEST(SpecialFolders, AddBackslash) {
  struct Case {
    std::u16string in;
    std::u16string out;
  };
  const Case cases[] = {{u"", u""}, {u"/x", u"/x/"}, {u"/x/", u"/x/"}, {u"/", u"/"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(Utf::ToUtf8(c.in));
    std::u16string path = c.in;
    SpecialFolders::AddBackslash(path);
    EXPECT_EQ(path, c.out);
  }
}

TEST(ProductPaths, AppDataIsTheUsersProductFolder) {
  test::TempConfigDirs dirs;
  EXPECT_EQ(Utf::ToUtf8(ProductPaths::AppData()), dirs.UserDir() + "/Quorvane/Kolvane/");
}

TEST(FileLength, OfFilesThroughThePosixPort) {
  test::TempConfigDirs dirs;
  const std::string path = dirs.UserDir() + "/f.bin";
  test::TempConfigDirs::WriteFile(path, std::string(1234, 'x'));
  EXPECT_EQ(FileLength::Of(Utf::FromUtf8(path)), 1234);
  EXPECT_EQ(FileLength::Of(Utf::FromUtf8(dirs.UserDir() + "/missing")), 0);
  EXPECT_EQ(FileLength::Of(Utf::FromUtf8(dirs.UserDir())), 0);  // a folder
  EXPECT_EQ(FileLength::Of(u""), 0);
}

}  // namespace
}  // namespace t4
