#include <gtest/gtest.h>
#include <unistd.h>
#include "model/internal/CategoriesAccess.h"

#include <string>

#include "ExchangeFixture.h"
#include "platform/common/DefaultPorts.h"
#include "platform/posix/TempConfigDirs.h"
#include "support/ErrorObject.h"

namespace t4::test {
namespace {

// The import and export on real files: the platform's file helper, the
// encoding rule and the XML documents of this platform.
class ExchangeFilesTest : public ExchangeTest {
 protected:
  void SetUp() override {
    ExchangeTest::SetUp();
    Ports::SetFiles(nullptr);
    platform::UseDefaultPorts();
  }
  std::u16string Path(const std::string& name) const {
    return Utf::FromUtf8(dirs.UserDir() + "/" + name);
  }
  void Write(const std::string& name, const std::string& bytes) const {
    TempConfigDirs::WriteFile(dirs.UserDir() + "/" + name, bytes);
  }
  TempConfigDirs dirs;
};

TEST_F(ExchangeFilesTest, HostileFilesEndInAClearErrorOrAnEmptyImport) {
  struct Case {
    const char* what;
    std::string name;
    std::string bytes;
    int32_t number;  // 0: no error
    Lines result;    // the categories afterwards
  };
  const std::string laughs =
      "<?xml version=\"1.0\"?><!DOCTYPE l [<!ENTITY a \"aaaaaaaaaa\">"
      "<!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\"><!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;\">"
      "<!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;\"><!ENTITY e \"&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;\">"
      "<!ENTITY f \"&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;\"><!ENTITY g "
      "\"&f;&f;&f;&f;&f;&f;&f;&f;&f;&f;\">]>"
      "<categories><category name=\"&g;\" color=\"1\" keyboardShortcut=\"1\"/></categories>";
  const Case cases[] = {
      {"billion laughs", "l.xml", laughs, 0, {"Red 1 0"}},
      {"external entity",
       "e.xml",
       "<!DOCTYPE c [<!ENTITY x SYSTEM \"file:///etc/passwd\">]><categories>"
       "<category name=\"&x;\" color=\"1\" keyboardShortcut=\"1\"/></categories>",
       0,
       {"Red 1 0"}},
      {"NUL bytes", "n.txt", std::string("Bl\0ue;7;\0\x32", 10), 0, {"Red 1 0", "Blue 7 2"}},
      {"invalid UTF-8 is Windows-1252",
       "w.csv",
       "B\xFCro;1;1\r\n\x80;2;2",
       0,
       {"Red 1 0", "B\xC3\xBCro 1 1", "\xE2\x82\xAC 2 2"}},
      {"invalid UTF-16",
       "u.txt",
       std::string("\xFF\xFE\x00\xDC;\0"
                   "A\0",
                   8),
       0,
       {"Red 1 0", "\xEF\xBF\xBD -2 -2", "A -2 -2"}},
      {"reg hex with odd digits",
       "o.reg",
       "\"Masterlist\"=hex:410,00,3b,00,00,00",
       RunTimeError::kOverflow,
       {"Red 1 0"}},
      {"reg hex with a single digit",
       "s.reg",
       "\"Masterlist\"=hex:4",
       RunTimeError::kSubscriptOutOfRange,
       {"Red 1 0"}},
      {"colour overflowing 32 bits",
       "c.txt",
       "Red;4294967296;0",
       RunTimeError::kOverflow,
       {"Red 1 0"}},
      {"shortcut overflowing 32 bits",
       "s.csv",
       "Blue;1;-99999999999",
       RunTimeError::kOverflow,
       {"Red 1 0"}},
      {"CSV with an unterminated quote",
       "q.csv",
       "\"Blue;7;2\r\n\"Green",
       0,
       {"Red 1 0", "Blue 7 2", "Green 7 2"}},
      {"reg without the value",
       "v.reg",
       "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\X]\r\n",
       cmFileTypeNotSupported,
       {"Red 1 0"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    ReadSeeds({{u"Red", 1, 0}});
    Write(c.name, c.bytes);
    int32_t number = 0;
    try {
      cats->ImportMasterlist(Path(c.name));
    } catch (const Error& e) {
      number = e.Number();
      EXPECT_FALSE(e.Description().empty());
    }
    EXPECT_EQ(number, c.number);
    EXPECT_EQ(Listing(), c.result);
    EXPECT_FALSE(app->BatchMode());
    EXPECT_FALSE(CategoriesAccess::Importing(*cats));
  }
}

TEST_F(ExchangeFilesTest, AHundredMebibyteFileIsRefusedInEveryFormat) {
  for (const char* name : {"big.txt", "big.csv", "big.reg", "big.xml"}) {
    SCOPED_TRACE(name);
    ReadSeeds({{u"Red", 1, 0}});
    Write(name, "");
    ASSERT_EQ(::truncate((dirs.UserDir() + "/" + name).c_str(), off_t{100} << 20), 0);
    try {
      cats->ImportMasterlist(Path(name));
      FAIL() << "no error";
    } catch (const Error& e) {
      EXPECT_EQ(e.Number(), cmFileTypeNotSupported);
      EXPECT_EQ(Utf::ToUtf8(e.Description()),
                Utf::ToUtf8(ErrorObject::GetMessage(cmFileTypeNotSupported) + u"\r\n" + Path(name) +
                            u": larger than 64 MiB"));
    }
    EXPECT_EQ(Listing(), Lines{"Red 1 0"});
  }
}

TEST_F(ExchangeFilesTest, AMissingFileIsAPathFileAccessErrorNamingIt) {
  ReadSeeds({{u"Red", 1, 0}});
  try {
    cats->ImportMasterlist(Path("missing.csv"));
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), RunTimeError::kPathFileAccessError);
    EXPECT_NE(e.Description().find(Path("missing.csv")), std::u16string::npos);
  }
}

TEST_F(ExchangeFilesTest, RoundTripsThroughFilesInEveryWritableFormat) {
  ReadSeeds({{u"B\u00FCro", 1, 0},
             {u"\u4ED5\u4E8B", 7, 2},
             {u"\U0001F600", 24, 11},
             {u"\"Boss\"", 3, 3},
             {u"O'Neil", 4, 4},
             {u" blank ", 5, 5}});
  const Lines before = Listing();
  for (const char* name : {"out/a/list.txt", "out/b/list.csv", "out/c/list.xml"}) {
    SCOPED_TRACE(name);
    cats->ExportMasterlist(Path(name));
    ReadSeeds({});
    cats->ImportMasterlist(Path(name));
    EXPECT_EQ(Listing(), before);
  }
}

TEST_F(ExchangeFilesTest, AnExportIntoAFolderThatCannotBeMadeFailsWithThePath) {
  ReadSeeds({{u"Red", 1, 0}});
  Write("file", "x");
  const std::u16string path = Path("file/below/list.csv");
  try {
    cats->ExportMasterlist(path);
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), cmCreateFile);
    EXPECT_EQ(Utf::ToUtf8(e.Description()),
              Utf::ToUtf8(u"Fehler beim Erstellen der Datei:\r\n" + path));
  }
}

}  // namespace
}  // namespace t4::test
