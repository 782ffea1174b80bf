#include "platform/win32/Win32FileHelper.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "platform/win32/WinText.h"
#include "support/ErrorObject.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4::win32 {
namespace {

// A fresh folder below the temporary folder, removed with what is in it.
class TempFolder {
 public:
  TempFolder() {
    wchar_t buffer[MAX_PATH] = {};
    ::GetTempPathW(MAX_PATH, buffer);
    path = WinText::FromWide(buffer) + u"t4files" + Utf::Decimal(::GetCurrentProcessId()) + u"_" +
           Utf::Decimal(++counter_);
    ::CreateDirectoryW(WinText::Wide(path), nullptr);
  }
  ~TempFolder() { Remove(path); }
  // Entries in the folder (files and folders), "." and ".." not counted.
  int Entries() const {
    WIN32_FIND_DATAW found{};
    HANDLE h = ::FindFirstFileW(WinText::Wide(path + u"\\*"), &found);
    if (h == INVALID_HANDLE_VALUE) return 0;
    int n = 0;
    do {
      const std::wstring name = found.cFileName;
      if (name != L"." && name != L"..") ++n;
    } while (::FindNextFileW(h, &found));
    ::FindClose(h);
    return n;
  }
  std::u16string path;

 private:
  static void Remove(const std::u16string& folder) {
    WIN32_FIND_DATAW found{};
    HANDLE h = ::FindFirstFileW(WinText::Wide(folder + u"\\*"), &found);
    if (h != INVALID_HANDLE_VALUE) {
      do {
        const std::u16string name = WinText::FromWide(found.cFileName);
        if (name == u"." || name == u"..") continue;
        const std::u16string full = folder + u"\\" + name;
        if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
          Remove(full);
        } else {
          ::DeleteFileW(WinText::Wide(full));
        }
      } while (::FindNextFileW(h, &found));
      ::FindClose(h);
    }
    ::RemoveDirectoryW(WinText::Wide(folder));
  }
  static inline int counter_ = 0;
};

TEST(Win32FileHelper, WritesInOneStepAndReadsUpToTheLimit) {
  TempFolder dir;
  Win32FileHelper files;
  const std::u16string path = dir.path + u"\\list.csv";
  files.WriteBytes(path, std::string("old", 3));
  files.WriteBytes(path, std::string("n\0w", 3));
  EXPECT_EQ(dir.Entries(), 1);
  struct Case {
    const char* what;
    size_t limit;
    bool read;
    std::string bytes;
  };
  const Case cases[] = {
      {"below the limit", 100, true, std::string("n\0w", 3)},
      {"at the limit", 3, true, std::string("n\0w", 3)},
      {"above the limit", 2, false, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    std::string bytes = "left over";
    EXPECT_EQ(files.ReadBytes(path, c.limit, bytes), c.read);
    EXPECT_EQ(bytes, c.bytes);
  }
}

TEST(Win32FileHelper, AMissingFileIsAPathFileAccessErrorNamingIt) {
  TempFolder dir;
  Win32FileHelper files;
  std::string bytes;
  try {
    files.ReadBytes(dir.path + u"\\missing.txt", 10, bytes);
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), RunTimeError::kPathFileAccessError);
    EXPECT_NE(e.Description().find(dir.path + u"\\missing.txt"), std::u16string::npos);
  }
}

TEST(Win32FileHelper, CreateFolderMakesEveryMissingParentWithEitherSeparator) {
  TempFolder dir;
  Win32FileHelper files;
  for (const std::u16string& deep : {dir.path + u"\\a\\b\\c", dir.path + u"/d/e"}) {
    SCOPED_TRACE(Utf::ToUtf8(deep));
    EXPECT_FALSE(files.FolderExists(deep));
    files.CreateFolder(deep);
    EXPECT_TRUE(files.FolderExists(deep));
  }
}

TEST(Win32FileHelper, AWriteThatCannotBeDoneRaisesCreateFileAndLeavesNothing) {
  TempFolder dir;
  Win32FileHelper files;
  files.WriteBytes(dir.path + u"\\afile", "x");
  files.CreateFolder(dir.path + u"\\afile\\below");
  EXPECT_FALSE(files.FolderExists(dir.path + u"\\afile\\below"));
  const std::u16string path = dir.path + u"\\afile\\below\\list.csv";
  try {
    files.WriteBytes(path, "new");
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), cmCreateFile);
    EXPECT_NE(e.Description().find(path), std::u16string::npos);
  }
  EXPECT_EQ(dir.Entries(), 1);
}

}  // namespace
}  // namespace t4::win32
