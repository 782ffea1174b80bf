#include "support/FileHelper.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "ErrorNumber.h"
#include "MemoryFiles.h"
#include "platform/common/DefaultPorts.h"
#include "support/ErrorObject.h"
#include "support/Ports.h"
#include "support/Utf.h"

namespace t4 {
namespace {

// A shell that only knows its path separator.
class SeparatorShell : public IShellPort {
 public:
  explicit SeparatorShell(char16_t separator) : separator_(separator) {}
  std::u16string SpecialFolderPath(int32_t) override { return u""; }
  std::u16string IniValue(const std::u16string&, const std::u16string&,
                          const std::u16string&) override {
    return u"";
  }
  char16_t PathSeparator() const override { return separator_; }
  std::u16string NowShortDateTime() override { return u""; }

 private:
  char16_t separator_;
};

class FileHelperTest : public ::testing::Test {
 protected:
  void SetUp() override { Ports::SetFiles(files); }
  void TearDown() override {
    Ports::SetFiles(nullptr);
    Ports::SetShell(nullptr);
  }
  std::shared_ptr<test::MemoryFiles> files = std::make_shared<test::MemoryFiles>();
};

TEST_F(FileHelperTest, GetFileInfoSplitsAtTheSeparatorsOfThePlatform) {
  struct Case {
    const char* what;
    char16_t separator;
    std::u16string path;
    std::u16string extension;
    std::u16string folder;
  };
  const Case cases[] = {
      {"Windows path", u'\\', u"C:\\x\\list.csv", u"csv", u"C:\\x"},
      {"Windows takes slashes too", u'\\', u"C:/x/list.xml", u"xml", u"C:/x"},
      {"mixed", u'\\', u"C:\\x/y\\list.reg", u"reg", u"C:\\x/y"},
      {"drive root keeps its separator", u'\\', u"C:\\list.txt", u"txt", u"C:\\"},
      {"UNC share", u'\\', u"\\\\srv\\share\\l.txt", u"txt", u"\\\\srv\\share"},
      {"bare name", u'\\', u"list.txt", u"txt", u""},
      {"upper-case extension kept as it is", u'\\', u"list.TXT", u"TXT", u""},
      {"last point counts", u'\\', u"a.b\\list.old.csv", u"csv", u"a.b"},
      {"point in the folder only", u'\\', u"a.b\\list", u"", u"a.b"},
      {"ends in a point", u'\\', u"list.", u"", u""},
      {"POSIX path", u'/', u"/tmp/x/list.csv", u"csv", u"/tmp/x"},
      {"POSIX root", u'/', u"/list.csv", u"csv", u"/"},
      {"POSIX backslash is part of the name", u'/', u"/tmp/a\\b.txt", u"txt", u"/tmp"},
      {"POSIX hidden file", u'/', u"/tmp/.csv", u"csv", u"/tmp"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Ports::SetShell(std::make_shared<SeparatorShell>(c.separator));
    const FileHelper::FileInfo info = FileHelper::GetFileInfo(c.path);
    EXPECT_EQ(Utf::ToUtf8(info.extension), Utf::ToUtf8(c.extension));
    EXPECT_EQ(Utf::ToUtf8(info.folder), Utf::ToUtf8(c.folder));
    EXPECT_EQ(info.path, c.path);
  }
}

TEST_F(FileHelperTest, ReadTextDecodesByTheEncodingRule) {
  files->files[u"a"] = std::string(
      "\xFF\xFE"
      "R\0;\0",
      6);
  files->files[u"b"] = "B\xFCro";
  EXPECT_EQ(FileHelper::ReadText(u"a"), u"R;");
  EXPECT_EQ(FileHelper::ReadText(u"b"), u"B\u00FCro");
}

TEST_F(FileHelperTest, AFileLargerThanTheLimitIsRefusedWithItsPath) {
  files->files[u"/big.csv"] = std::string(FileHelper::kMaxReadBytes + 1, 'a');
  try {
    FileHelper::ReadText(u"/big.csv");
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), cmFileTypeNotSupported);
    EXPECT_EQ(e.Description(), ErrorObject::GetMessage(cmFileTypeNotSupported) +
                                   u"\r\n/big.csv: larger than 64 MiB");
  }
}

TEST_F(FileHelperTest, AMissingFileRaisesThePortsError) {
  EXPECT_EQ(test::NumberOf([] { FileHelper::ReadText(u"missing"); }),
            RunTimeError::kPathFileAccessError);
}

TEST_F(FileHelperTest, WriteTextWritesUtf8WithAMarkAndAppendsToTheText) {
  FileHelper::WriteText(u"f", u"B\u00FCro", false);
  EXPECT_EQ(files->files[u"f"],
            "\xEF\xBB\xBF"
            "B\xC3\xBCro");
  FileHelper::WriteText(u"f", u";x", true);
  EXPECT_EQ(files->files[u"f"],
            "\xEF\xBB\xBF"
            "B\xC3\xBCro;x");
  FileHelper::WriteText(u"new", u"x", true);
  EXPECT_EQ(files->files[u"new"], "\xEF\xBB\xBFx");
}

TEST_F(FileHelperTest, TheCurrentFolderAlwaysExistsAndIsNeverMade) {
  EXPECT_TRUE(FileHelper::FolderExists(u""));
  FileHelper::CreateFolder(u"");
  EXPECT_TRUE(files->created.empty());
  EXPECT_FALSE(FileHelper::FolderExists(u"/x"));
  FileHelper::CreateFolder(u"/x");
  EXPECT_TRUE(FileHelper::FolderExists(u"/x"));
}

}  // namespace
}  // namespace t4
