#include "support/ErrorObject.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "support/Language.h"
#include "support/Ports.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4 {
namespace {

class FixedClockShell : public IShellPort {
 public:
  std::u16string SpecialFolderPath(int32_t) override { return u""; }
  std::u16string IniValue(const std::u16string&, const std::u16string&,
                          const std::u16string&) override {
    return u"";
  }
  char16_t PathSeparator() const override { return u'/'; }
  std::u16string NowShortDateTime() override { return u"22.11.2026 03:04:05"; }
};

// The six fields of an object that holds no error.
void ExpectEmpty(const ErrorObject& e) {
  EXPECT_EQ(e.Number(), 0);
  EXPECT_EQ(e.Source(), u"");
  EXPECT_EQ(e.Description(), u"");
  EXPECT_EQ(e.HelpContext(), 0);
  EXPECT_EQ(e.HelpFile(), u"");
  EXPECT_EQ(e.LastDLLError(), 0);
}

TEST(ErrorObject, FreshObjectIsEmpty) {
  ErrorObject e;
  ExpectEmpty(e);
}

TEST(ErrorObject, FieldsAreReadWrite) {
  ErrorObject e;
  e.SetNumber(5);
  e.SetSource(u"s");
  e.SetDescription(u"d");
  e.SetHelpContext(7);
  e.SetHelpFile(u"h.chm");
  e.SetLastDLLError(3);
  EXPECT_EQ(e.Number(), 5);
  EXPECT_EQ(e.Source(), u"s");
  EXPECT_EQ(e.Description(), u"d");
  EXPECT_EQ(e.HelpContext(), 7);
  EXPECT_EQ(e.HelpFile(), u"h.chm");
  EXPECT_EQ(e.LastDLLError(), 3);
  e.Clear();
  ExpectEmpty(e);
}

TEST(ErrorObject, CaptureTakesOverTheCurrentErrorAndAppendsTheLabel) {
  ErrorObject e;
  try {
    Error current(457, u"dup", u"Tandrel4", u"help.chm", 12);
    current.SetLastDllError(2);
    throw current;
  } catch (...) {
    EXPECT_TRUE(e.Capture(u"Tandrel4.Categories.Add (0)"));
  }
  EXPECT_EQ(e.Number(), 457);
  EXPECT_EQ(e.Description(), u"dup");
  EXPECT_EQ(e.Source(), u"Tandrel4; Tandrel4.Categories.Add (0)");
  EXPECT_EQ(e.HelpFile(), u"help.chm");
  EXPECT_EQ(e.HelpContext(), 12);
  EXPECT_EQ(e.LastDLLError(), 2);
}

TEST(ErrorObject, CaptureTurnsForeignExceptionsIntoRunTimeErrors) {
  ErrorObject e;
  try {
    throw std::bad_alloc();
  } catch (...) {
    e.Capture(u"L");
  }
  EXPECT_EQ(e.Number(), RunTimeError::kOutOfMemory);
  EXPECT_EQ(e.Description(), u"Out of memory");
  try {
    throw std::runtime_error("boom");
  } catch (...) {
    e.Capture(u"L");
  }
  EXPECT_EQ(e.Number(), RunTimeError::kInternalError);
  EXPECT_NE(e.Description().find(u"boom"), std::u16string::npos);
}

TEST(ErrorObject, RaiseHandsOnEverythingButTheLastSystemError) {
  ErrorObject e;
  e.SetNumber(cmNameExist);
  e.SetSource(u"src");
  e.SetDescription(u"desc");
  e.SetHelpFile(u"f");
  e.SetHelpContext(9);
  e.SetLastDLLError(5);
  try {
    e.Raise();
    FAIL() << "Raise returned";
  } catch (const Error& raised) {
    EXPECT_EQ(raised.Number(), cmNameExist);
    EXPECT_EQ(raised.Source(), u"src");
    EXPECT_EQ(raised.Description(), u"desc");
    EXPECT_EQ(raised.HelpFile(), u"f");
    EXPECT_EQ(raised.HelpContext(), 9);
    EXPECT_EQ(raised.LastDllError(), 0);
  }
}

TEST(ErrorObject, RaiseOfNumberZeroRaises800A0000) {
  ErrorObject e;
  try {
    e.Raise();
    FAIL() << "Raise returned";
  } catch (const Error& raised) {
    EXPECT_EQ(static_cast<uint32_t>(raised.Number()), 0x800A0000u);
  }
}

TEST(ErrorObject, CodesAreTheBasePlusTheMessageId) {
  EXPECT_EQ(cmNameExist, -796909014);
  EXPECT_EQ(cmInvalidOutlook, -796909004);
  EXPECT_EQ(cmItemNotFound, -796908994);
  EXPECT_EQ(cmFileTypeNotSupported, -796908984);
  EXPECT_EQ(cmCreateFile, -796908974);
  EXPECT_EQ(cmNameExist - ErrorObject::kMessageBase, 10);
  EXPECT_EQ(cmCreateFile - ErrorObject::kMessageBase, 50);
}

class GermanLanguage : public ::testing::Test {
 protected:
  void SetUp() override { Language::SetLanguageID(1031); }
  void TearDown() override { Language::SetLanguageID(1031); }
};

TEST_F(GermanLanguage, MessageTextsOfEveryCode) {
  struct Case {
    int32_t code;
    std::u16string text;
  };
  const Case cases[] = {
      {cmNameExist,
       u"Der Name existiert bereits.\r\n\r\nBitte w\u00e4hlen Sie einen anderen Namen."},
      {cmInvalidOutlook,
       u"Fehler beim Zugriff auf Outlook.\r\n\r\nBitte starten Sie die Anwendung erneut."},
      {cmItemNotFound, u"Das Outlook-Element wurde nicht gefunden."},
      {cmFileTypeNotSupported, u"Das Dateiformat wird nicht unterst\u00fctzt."},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.code);
    EXPECT_EQ(ErrorObject::GetMessage(c.code), c.text);
  }
}

TEST_F(GermanLanguage, CreateFileFillsTheFileName) {
  const std::vector<std::u16string> args = {u"C:\\x.csv"};
  EXPECT_EQ(ErrorObject::GetMessage(cmCreateFile, &args),
            u"Fehler beim Erstellen der Datei:\r\nC:\\x.csv");
}

TEST_F(GermanLanguage, CreateFileWithoutArgumentsKeepsThePlaceholder) {
  EXPECT_EQ(ErrorObject::GetMessage(cmCreateFile), u"Fehler beim Erstellen der Datei:\r\n#0");
  const std::vector<std::u16string> none;
  EXPECT_EQ(ErrorObject::GetMessage(cmCreateFile, &none),
            u"Fehler beim Erstellen der Datei:\r\n#0");
}

TEST_F(GermanLanguage, PlaceholdersAreFilledBeforeLineBreaks) {
  // An argument with "|" gets a line break too, because "|" is replaced last.
  const std::vector<std::u16string> args = {u"a|b"};
  EXPECT_EQ(ErrorObject::GetMessage(cmCreateFile, &args),
            u"Fehler beim Erstellen der Datei:\r\na\r\nb");
}

TEST_F(GermanLanguage, CodeOutsideTheTableGivesAnEmptyText) {
  EXPECT_EQ(ErrorObject::GetMessage(ErrorObject::kMessageBase + 11), u"");
  EXPECT_EQ(ErrorObject::GetMessage(0), u"");
  EXPECT_EQ(ErrorObject::GetMessage(5), u"");
}

TEST_F(GermanLanguage, CodeWhoseSubtractionOverflowsRaisesOverflow) {
  // The base is negative as a 32-bit number; subtracting it from a large
  // positive number leaves the 32-bit range.
  for (int32_t number : {INT32_MAX, 1350574624}) {
    SCOPED_TRACE(number);
    try {
      ErrorObject::GetMessage(number);
      FAIL() << "no overflow";
    } catch (const Error& e) {
      EXPECT_EQ(e.Number(), RunTimeError::kOverflow);
    }
  }
  EXPECT_NO_THROW(ErrorObject::GetMessage(1350574623));
}

TEST_F(GermanLanguage, RaiseCodeRaisesTheCodeWithItsText) {
  try {
    ErrorObject::RaiseCode(cmCreateFile, {u"out.csv"});
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), cmCreateFile);
    EXPECT_EQ(e.Description(), u"Fehler beim Erstellen der Datei:\r\nout.csv");
    EXPECT_EQ(e.Source(), u"Tandrel4");
  }
}

TEST(ErrorObjectEnglish, EnglishGivesEmptyDescriptions) {
  Language::SetLanguageID(1033);
  EXPECT_EQ(ErrorObject::GetMessage(cmNameExist), u"");
  const std::vector<std::u16string> args = {u"x"};
  EXPECT_EQ(ErrorObject::GetMessage(cmCreateFile, &args), u"");
  Language::SetLanguageID(1031);
  EXPECT_NE(ErrorObject::GetMessage(cmNameExist), u"");
}

TEST(ErrorObject, LogEntryLayout) {
  Ports::SetShell(std::make_shared<FixedClockShell>());
  ErrorObject e;
  e.SetNumber(cmNameExist);
  e.SetDescription(u"Der Name existiert bereits.");
  e.SetSource(u"Tandrel4; Tandrel4.Category.Name (0)");
  EXPECT_EQ(e.GetLogEntry(),
            u"22.11.2026 03:04:05\r\n"
            u"  App: Tandrel4\r\n"
            u"  Msg: Der Name existiert bereits.\r\n"
            u"  No : -796909014\r\n"
            u"  Src: Tandrel4; Tandrel4.Category.Name (0)\r\n"
            u"\r\n");
  Ports::SetShell(nullptr);
}

TEST(ErrorObject, LogEntryStartsWithTheRealDateAndTime) {
  ErrorObject e;
  const std::u16string entry = e.GetLogEntry();
  const size_t firstBreak = entry.find(u"\r\n");
  ASSERT_NE(firstBreak, std::u16string::npos);
  EXPECT_GT(firstBreak, 4u);  // some date and time text
  EXPECT_NE(entry.find(u"\r\n  No : 0\r\n"), std::u16string::npos);
}

TEST(ErrorObject, ErrSourceLabel) {
  EXPECT_EQ(ErrorObject::GetErrSource(u"CatsExternCsv", u"ICatsExtern_Export"),
            u"Tandrel4.CatsExternCsv.ICatsExtern_Export (0)");
  EXPECT_EQ(ErrorObject::GetErrSource(u"Application", u"Initialize", 17),
            u"Tandrel4.Application.Initialize (17)");
}

}  // namespace
}  // namespace t4
