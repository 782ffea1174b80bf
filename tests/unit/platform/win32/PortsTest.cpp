// The Windows ports, run under Wine (or Windows): special folders through the
// shell, INI values through the profile API, the message table as the
// program's string table resource, and the settings file end to end.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "IniCases.h"
#include "platform/win32/WinText.h"
#include "support/FileLength.h"
#include "support/IniFile.h"
#include "support/MessageTable.h"
#include "support/Options.h"
#include "support/Ports.h"
#include "support/ProcessValues.h"
#include "support/ProductPaths.h"
#include "support/SpecialFolders.h"
#include "support/Utf.h"

namespace t4 {
namespace {

using win32::WinText;

bool IsFolder(const std::u16string& path) {
  const DWORD attributes = ::GetFileAttributesW(WinText::Wide(path));
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::u16string TempFolder() {
  wchar_t buffer[MAX_PATH] = {};
  ::GetTempPathW(MAX_PATH, buffer);
  return WinText::FromWide(buffer);
}

void WriteBytes(const std::u16string& path, const std::string& bytes) {
  HANDLE h = ::CreateFileW(WinText::Wide(path), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(h, INVALID_HANDLE_VALUE);
  DWORD written = 0;
  ::WriteFile(h, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  ::CloseHandle(h);
}

TEST(Win32ShellPort, SpecialFoldersExistAndHaveNoTrailingBackslash) {
  for (int32_t csidl : {SpecialFolders::kCsidlCommonAppData, SpecialFolders::kCsidlAppData}) {
    SCOPED_TRACE(csidl);
    const std::u16string path = SpecialFolders::GetSpecialFolder(csidl, false);
    ASSERT_FALSE(path.empty());
    EXPECT_NE(path.back(), u'\\');
    EXPECT_TRUE(IsFolder(path)) << Utf::ToUtf8(path);
    EXPECT_EQ(SpecialFolders::GetSpecialFolder(csidl, true), path);
  }
  EXPECT_NE(SpecialFolders::GetSpecialFolder(SpecialFolders::kCsidlCommonAppData, false),
            SpecialFolders::GetSpecialFolder(SpecialFolders::kCsidlAppData, false));
}

TEST(Win32ShellPort, UnknownFolderGivesEmpty) {
  EXPECT_EQ(SpecialFolders::GetSpecialFolder(0x7E, false), u"");
}

TEST(Win32ShellPort, ProductFoldersUseBackslashes) {
  const std::u16string common =
      SpecialFolders::GetSpecialFolder(SpecialFolders::kCsidlCommonAppData, false);
  EXPECT_EQ(SpecialFolders::GetSettingsPath(), common + u"\\Quorvane\\Kolvane\\");
  const std::u16string user =
      SpecialFolders::GetSpecialFolder(SpecialFolders::kCsidlAppData, false);
  EXPECT_EQ(ProductPaths::AppData(), user + u"\\Quorvane\\Kolvane\\");
  std::u16string path = u"C:\\x";
  SpecialFolders::AddBackslash(path);
  EXPECT_EQ(path, u"C:\\x\\");
}

TEST(Win32ShellPort, IniValuesFollowTheProfileApi) {
  const std::u16string file = TempFolder() + u"tandrel4-ini-test.ini";
  WriteBytes(file, test::kIniText);
  for (const test::IniCase& c : test::kIniCases) {
    SCOPED_TRACE(Utf::ToUtf8(std::u16string(c.section) + u"/" + c.key));
    EXPECT_EQ(IniFile::GetIniValue(file, c.section, c.key), c.value);
  }
  WriteBytes(file, "[s]\r\nk=" + std::string(300, 'x') + "\r\n");
  EXPECT_EQ(IniFile::GetIniValue(file, u"s", u"k").size(), 254u);
  ::DeleteFileW(WinText::Wide(file));
  EXPECT_EQ(IniFile::GetIniValue(file, u"s", u"k"), u"");
}

TEST(Win32StringResources, TheResourceHoldsTheMessageTable) {
  for (const auto& [id, text] : MessageTable::Rows()) {
    SCOPED_TRACE(id);
    auto loaded = Ports::Strings().Text(id);
    ASSERT_TRUE(loaded.has_value());
    EXPECT_EQ(*loaded, text);
  }
  EXPECT_EQ(Ports::Strings().Text(10)->find(u"w\u00e4hlen"), 35u);
  EXPECT_FALSE(Ports::Strings().Text(10010).has_value());
  EXPECT_FALSE(Ports::Strings().Text(11).has_value());
}

TEST(Win32FileHelper, FileLength) {
  const std::u16string file = TempFolder() + u"tandrel4-length-\u00e4.bin";
  WriteBytes(file, std::string(777, 'z'));
  EXPECT_EQ(FileLength::Of(file), 777);
  ::DeleteFileW(WinText::Wide(file));
  EXPECT_EQ(FileLength::Of(file), 0);
  EXPECT_EQ(FileLength::Of(TempFolder()), 0);
}

class SettingsFile : public ::testing::Test {
 protected:
  void SetUp() override {
    ProcessValues::Reset();
    folder_ = SpecialFolders::GetSettingsPath();
    // The product folder and its parent, the vendor folder.
    const std::u16string parent = folder_.substr(0, folder_.size() - 8);
    ::CreateDirectoryW(WinText::Wide(parent), nullptr);
    ::CreateDirectoryW(WinText::Wide(folder_), nullptr);
  }
  void TearDown() override {
    ::DeleteFileW(WinText::Wide(folder_ + u"settings.ini"));
    ProcessValues::Reset();
  }
  void Write(const std::string& bytes) { WriteBytes(folder_ + u"settings.ini", bytes); }
  std::u16string folder_;
};

TEST_F(SettingsFile, DefaultsWithoutTheFile) {
  Options options;
  options.ReadSettings();
  EXPECT_EQ(options.ChunkSize(), 100);
  EXPECT_EQ(options.CSVDelimiter(), u";");
}

TEST_F(SettingsFile, ValuesFromTheAllUsersFolder) {
  Write("[default]\r\nChunkSize=250\r\nCSVDelimiter= , \r\n");
  Options options;
  options.ReadSettings();
  EXPECT_EQ(options.ChunkSize(), 250);
  EXPECT_EQ(options.CSVDelimiter(), u",");
  EXPECT_EQ(ProcessValues::CsvDelimiter(), u",");
}

TEST_F(SettingsFile, RejectedValues) {
  Write("[default]\r\nChunkSize=x\r\nCSVDelimiter=tab\r\n");
  Options options;
  options.ReadSettings();
  EXPECT_EQ(options.ChunkSize(), 0);
  EXPECT_EQ(options.CSVDelimiter(), u";");
}

}  // namespace
}  // namespace t4
