#include <gtest/gtest.h>

#include <filesystem>

#include "TempConfigDirs.h"
#include "platform/posix/IniFileReader.h"
#include "support/Utf.h"
#include "support/modIniFile.h"
#include "support/modSpecialFolder2.h"

namespace t4 {
namespace {

TEST(IniFileReader, Rules) {
  const std::u16string text =
      u"[Default]\r\n"
      u"  Key = value with blanks  \r\n"
      u"quoted=\"a b\"\n"
      u"single=' x '\n"
      u"half=\"open\n"
      u"dup=first\n"
      u"dup=second\n"
      u"empty=\n"
      u"noequals\n"
      u"[other]\n"
      u"Key=other\n"
      u"[default]\n"
      u"late=yes\n";
  struct Case {
    const char16_t* section;
    const char16_t* key;
    const char16_t* value;
  };
  const Case cases[] = {
      {u"default", u"key", u"value with blanks"},
      {u"DEFAULT", u"KEY", u"value with blanks"},
      {u"default", u"quoted", u"a b"},
      {u"default", u"single", u" x "},
      {u"default", u"half", u"\"open"},
      {u"default", u"dup", u"first"},
      {u"default", u"empty", u""},
      {u"default", u"noequals", u""},
      {u"default", u"missing", u""},
      {u"other", u"key", u"other"},
      {u"nosuch", u"key", u""},
      {u"default", u"late", u"yes"},
  };
  for (const Case& c : cases) {
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

TEST(modIniFile, MissingFileGivesEmpty) {
  test::TempConfigDirs dirs;
  EXPECT_EQ(modIniFile::GetIniValue(Utf::FromUtf8(dirs.CommonDir() + "/none.ini"), u"default",
                                    u"ChunkSize"),
            u"");
}

TEST(modIniFile, ReadsAFile) {
  test::TempConfigDirs dirs;
  const std::string path = dirs.CommonDir() + "/a.ini";
  test::TempConfigDirs::WriteFile(path, "[default]\nChunkSize=250\n");
  EXPECT_EQ(modIniFile::GetIniValue(Utf::FromUtf8(path), u"default", u"ChunkSize"), u"250");
  EXPECT_EQ(modIniFile::GetIniValue(Utf::FromUtf8(path), u"default", u"Other"), u"");
  EXPECT_EQ(modIniFile::GetIniValue(Utf::FromUtf8(path), u"x", u"ChunkSize"), u"");
}

TEST(modSpecialFolder2, FoldersComeFromTheXdgVariables) {
  test::TempConfigDirs dirs;
  EXPECT_EQ(Utf::ToUtf8(modSpecialFolder2::GetSpecialFolder(35, false)), dirs.CommonDir());
  EXPECT_EQ(Utf::ToUtf8(modSpecialFolder2::GetSpecialFolder(26, false)), dirs.UserDir());
  EXPECT_EQ(modSpecialFolder2::GetSpecialFolder(5, false), u"");  // unknown here
  EXPECT_EQ(Utf::ToUtf8(modSpecialFolder2::GetSettingsPath()),
            dirs.CommonDir() + "/Quorvane/Kolvane/");
}

TEST(modSpecialFolder2, DefaultsWithoutTheVariables) {
  test::TempConfigDirs dirs;
  unsetenv("XDG_CONFIG_DIRS");
  unsetenv("XDG_CONFIG_HOME");
  EXPECT_EQ(modSpecialFolder2::GetSpecialFolder(35, false), u"/etc/xdg");
  const char* home = getenv("HOME");
  if (home != nullptr && *home == '/') {
    EXPECT_EQ(Utf::ToUtf8(modSpecialFolder2::GetSpecialFolder(26, false)),
              std::string(home) + "/.config");
  }
  setenv("XDG_CONFIG_DIRS", "relative/path", 1);
  EXPECT_EQ(modSpecialFolder2::GetSpecialFolder(35, false), u"/etc/xdg");
}

TEST(modSpecialFolder2, TrailingSlashIsDroppedAndCreateMakesTheFolder) {
  test::TempConfigDirs dirs;
  const std::string nested = dirs.UserDir() + "/a/b/";
  setenv("XDG_CONFIG_HOME", nested.c_str(), 1);
  EXPECT_EQ(Utf::ToUtf8(modSpecialFolder2::GetSpecialFolder(26, false)), dirs.UserDir() + "/a/b");
  EXPECT_FALSE(std::filesystem::exists(dirs.UserDir() + "/a/b"));
  modSpecialFolder2::GetSpecialFolder(26, true);
  EXPECT_TRUE(std::filesystem::is_directory(dirs.UserDir() + "/a/b"));
}

TEST(modSpecialFolder2, AddBackslash) {
  struct Case {
    std::u16string in;
    std::u16string out;
  };
  const Case cases[] = {{u"", u""}, {u"/x", u"/x/"}, {u"/x/", u"/x/"}, {u"/", u"/"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(Utf::ToUtf8(c.in));
    std::u16string path = c.in;
    modSpecialFolder2::AddBackslash(path);
    EXPECT_EQ(path, c.out);
  }
}

}  // namespace
}  // namespace t4
