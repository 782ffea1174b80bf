#include "exchange/CatsExternBase.h"
#include "model/internal/CategoriesAccess.h"
#include "session/internal/ApplicationAccess.h"

#include <gtest/gtest.h>

#include "ErrorNumber.h"
#include "ExchangeFixture.h"
#include "support/ErrorObject.h"
#include "support/Language.h"

namespace t4::test {
namespace {

const std::u16string kNotSupported = u"Das Dateiformat wird nicht unterst\u00FCtzt.";

class CatsExternBaseTest : public ExchangeTest {};

TEST_F(CatsExternBaseTest, TheFormatIsChosenByTheExtensionComparedExactly) {
  ReadSeeds({{u"Red", 1, 0}});
  files->folders.insert(u"/x");
  struct Case {
    const char* what;
    std::u16string file;
    bool import;
    int32_t number;
  };
  const Case cases[] = {
      {"txt export", u"/x/list.txt", false, 0},
      {"csv export", u"/x/list.csv", false, 0},
      {"xml export", u"/x/list.xml", false, 0},
      {"reg export is refused", u"/x/list.reg", false, cmFileTypeNotSupported},
      {"upper-case TXT", u"/x/list.TXT", false, cmFileTypeNotSupported},
      {"mixed-case Csv", u"/x/list.Csv", false, cmFileTypeNotSupported},
      {"other extension", u"/x/list.doc", false, cmFileTypeNotSupported},
      {"no extension", u"/x/list", false, cmFileTypeNotSupported},
      {"import of TXT", u"/x/list.TXT", true, cmFileTypeNotSupported},
      {"import of reg", u"/x/list.reg", true, 0},
  };
  Put(u"/x/list.reg", u"\"Masterlist\"=\"Blue\"");
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    try {
      if (c.import) {
        cats->ImportMasterlist(c.file);
      } else {
        cats->ExportMasterlist(c.file);
      }
      EXPECT_EQ(c.number, 0);
    } catch (const Error& e) {
      EXPECT_EQ(e.Number(), c.number);
      EXPECT_EQ(e.Description(), kNotSupported);
      const std::u16string proc = c.import ? u"ImportMasterlist" : u"ExportMasterlist";
      EXPECT_EQ(Utf::ToUtf8(e.Source()),
                Utf::ToUtf8(u"Tandrel4; Tandrel4.CatsExternBase.CreateChild (0); "
                            u"Tandrel4.CatsExternBase." +
                            proc + u" (0); Tandrel4.Categories." + proc + u" (0)"));
    }
  }
  EXPECT_EQ(files->files.count(u"/x/list.TXT"), 0u);
  EXPECT_EQ(files->files.count(u"/x/list.reg"), 1u);
}

TEST_F(CatsExternBaseTest, APlainTextExportIsOneLineOfTriples) {
  ReadSeeds({{u"Red", 1, 0}, {u"Blue", 7, 2}, {u"O'Neil \"x\", y", -2, -2}});
  files->folders.insert(u"/x");
  cats->ExportMasterlist(u"/x/list.txt");
  EXPECT_EQ(Utf::ToUtf8(Got(u"/x/list.txt")), "Red;1;0;Blue;7;2;O'Neil \"x\", y;-2;-2;");
  EXPECT_EQ(files->files.at(u"/x/list.txt").substr(0, 3), "\xEF\xBB\xBF");
}

TEST_F(CatsExternBaseTest, EveryCategoryButTheDefaultIsExportedWhateverTheFilter) {
  ReadSeeds({{u"Red", 1, 0}, {u"Blue", 7, 2}});
  cats->Add(u"Outside", false, u"", 3, 4);
  cats->SetFilter(1, 0, cmfmMemberOnly, cmmlMasterlistOnly);
  files->folders.insert(u"/x");
  cats->ExportMasterlist(u"/x/list.txt");
  EXPECT_EQ(Utf::ToUtf8(Got(u"/x/list.txt")), "Red;1;0;Blue;7;2;Outside;3;4;");
}

TEST_F(CatsExternBaseTest, OnlyTheDefaultCategoryExportsAnEmptyFile) {
  ReadSeeds({});
  files->folders.insert(u"/x");
  for (const char16_t* file : {u"/x/list.txt", u"/x/list.csv"}) {
    SCOPED_TRACE(Utf::ToUtf8(file));
    cats->ExportMasterlist(file);
    EXPECT_EQ(files->files.at(file), "\xEF\xBB\xBF");
  }
}

TEST_F(CatsExternBaseTest, TheFolderIsMadeWhenMissingOrTheExportFailsWithItsPath) {
  ReadSeeds({{u"Red", 1, 0}});
  cats->ExportMasterlist(u"/new/deep/list.txt");
  EXPECT_EQ(files->created, std::vector<std::u16string>{u"/new/deep"});
  EXPECT_EQ(Utf::ToUtf8(Got(u"/new/deep/list.txt")), "Red;1;0;");

  files->unmakeable.insert(u"/locked/x");
  try {
    cats->ExportMasterlist(u"/locked/x/list.csv");
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), cmCreateFile);
    EXPECT_EQ(Utf::ToUtf8(e.Description()),
              "Fehler beim Erstellen der Datei:\r\n/locked/x/list.csv");
    EXPECT_EQ(Utf::ToUtf8(e.Source()),
              "Tandrel4; Tandrel4.CatsExternBase.ExportMasterlist (0); "
              "Tandrel4.Categories.ExportMasterlist (0)");
  }
  EXPECT_EQ(files->files.count(u"/locked/x/list.csv"), 0u);
}

TEST_F(CatsExternBaseTest, AFailedWriteIsTheFileHelpersError) {
  ReadSeeds({{u"Red", 1, 0}});
  files->folders.insert(u"/x");
  files->failWrites = true;
  EXPECT_EQ(NumberOf([&] { cats->ExportMasterlist(u"/x/list.xml"); }), cmCreateFile);
}

TEST_F(CatsExternBaseTest, AMissingFileIsTheFileHelpersErrorAndChangesNothing) {
  ReadSeeds({{u"Red", 1, 0}});
  try {
    cats->ImportMasterlist(u"/x/missing.csv");
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), RunTimeError::kPathFileAccessError);
    EXPECT_NE(e.Source().find(u"Tandrel4.CatsExternBase.ImportMasterlist (0); "
                              u"Tandrel4.Categories.ImportMasterlist (0)"),
              std::u16string::npos);
  }
  EXPECT_EQ(Listing(), Lines{"Red 1 0"});
  EXPECT_FALSE(app->BatchMode());
  EXPECT_FALSE(CategoriesAccess::Importing(*cats));
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(), 0);
}

TEST_F(CatsExternBaseTest, TheListIsReadAsNamesOrAsTriples) {
  struct Case {
    const char* what;
    std::u16string text;
    Lines result;
  };
  const Case cases[] = {
      {"empty file imports nothing", u"", {}},
      {"two fields are names", u"Red;Blue", {"Red -2 -2", "Blue -2 -2"}},
      {"a numeric second field makes triples", u"Red;1;0", {"Red 1 0"}},
      {"a name second makes names", u"Red;Blue;Green", {"Red -2 -2", "Blue -2 -2", "Green -2 -2"}},
      {"one name per line",
       u"Red\r\nBlue\r\nGreen\r\n",
       {"Red -2 -2", "Blue -2 -2", "Green -2 -2"}},
      {"a name with a comma is two",
       u"Home, private;Work",
       {"Home -2 -2", " private -2 -2", "Work -2 -2"}},
      {"empty names are skipped", u";;Red;;", {"Red -2 -2"}},
      {"plain-text export form", u"Red;1;0;Blue;7;2;", {"Red 1 0", "Blue 7 2"}},
      {"an empty name skips its triple", u"Red;1;0;;5;5;Blue;7;2", {"Red 1 0", "Blue 7 2"}},
      {"incomplete last triple keeps both values", u"Red;3;4;Blue", {"Red 3 4", "Blue 3 4"}},
      {"incomplete last triple keeps the shortcut", u"Red;3;4;Blue;5", {"Red 3 4", "Blue 5 4"}},
      {"numbers at the start of the field", u"A;12;3.5;B;12abc;x", {"A 12 4", "B 12 0"}},
      {"a half rounds to even", u"A;2.5;0.5", {"A 2 0"}},
      {"blanks around the second field", u"A; 7 ;1", {"A 7 1"}},
      {"hexadecimal second field", u"A;&H7;1", {"A 7 1"}},
      {"out-of-range values keep the category's", u"A;99;99", {"A -2 -2"}},
      {"commas separate too", u"Red,1,0,Blue,7,2", {"Red 1 0", "Blue 7 2"}},
      {"a lone LF is no separator", u"Red\nBlue", {"Red\nBlue -2 -2"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    ReadSeeds({});
    Put(u"list.txt", c.text);
    cats->ImportMasterlist(u"list.txt");
    EXPECT_EQ(Listing(), c.result);
  }
}

TEST_F(CatsExternBaseTest, NulCharactersAreRemoved) {
  ReadSeeds({});
  files->files[u"list.txt"] = std::string(
      "R\0ed;1;\0"
      "0;Bl\0ue",
      15);
  cats->ImportMasterlist(u"list.txt");
  EXPECT_EQ(Listing(), (Lines{"Red 1 0", "Blue 1 0"}));
}

TEST_F(CatsExternBaseTest, ExistingNamesGetTheFilesValuesOnlyWhereTheyDiffer) {
  ReadSeeds({{u"Red", 1, 0}, {u"Blue", 7, 2}, {u"Green", 4, 4}});
  Put(u"list.txt", u"red;1;0;BLUE;8;2;Green;5;6;New;3;3");
  cats->ImportMasterlist(u"list.txt");
  EXPECT_EQ(Listing(), (Lines{"Red 1 0", "Blue 8 2", "Green 5 6", "New 3 3"}));
  EXPECT_EQ(log->events, (std::vector<std::string>{"ItemChange Blue", "ItemChange Green",
                                                   "ItemChange Green", "ItemAdd New"}));
  EXPECT_TRUE(cats->Changed());
}

TEST_F(CatsExternBaseTest, AnImportIsOneUndoStep) {
  ReadSeeds({{u"Red", 1, 0}});
  Put(u"list.txt", u"Red;5;1;Blue;7;2;Green;3;3");
  cats->ImportMasterlist(u"list.txt");
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(), 1);
  EXPECT_FALSE(app->BatchMode());
  EXPECT_FALSE(CategoriesAccess::Importing(*cats));
  app->Undo();
  EXPECT_EQ(Listing(), Lines{"Red 1 0"});
  app->Redo();
  EXPECT_EQ(Listing(), (Lines{"Red 5 1", "Blue 7 2", "Green 3 3"}));
}

TEST_F(CatsExternBaseTest, ImportedNamesAreNotTransliterated) {
  Language::SetLanguageID(1033);
  ReadSeeds({});
  Put(u"list.txt", u"B\u00FCro;Stra\u00DFe");
  cats->ImportMasterlist(u"list.txt");
  EXPECT_EQ(Listing(), (Lines{"B\xC3\xBCro -2 -2",
                              "Stra\xC3\x9F"
                              "e -2 -2"}));
}

TEST_F(CatsExternBaseTest, AFailedMergeKeepsWhatWasMergedBefore) {
  ReadSeeds({{u"Red", 1, 0}});
  // The colour of the second triple does not fit 32 bits: Overflow.
  Put(u"list.txt", u"Blue;7;2;Green;99999999999;0;Black;1;1");
  try {
    cats->ImportMasterlist(u"list.txt");
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), RunTimeError::kOverflow);
    EXPECT_NE(e.Source().find(u"Tandrel4.CatsExternBase.ImportMasterlist (0); "
                              u"Tandrel4.Categories.ImportMasterlist (0)"),
              std::u16string::npos);
  }
  EXPECT_EQ(Listing(), (Lines{"Red 1 0", "Blue 7 2"}));
  EXPECT_FALSE(app->BatchMode());
  EXPECT_FALSE(CategoriesAccess::Importing(*cats));
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(), 1);
  app->Undo();
  EXPECT_EQ(Listing(), Lines{"Red 1 0"});
}

TEST_F(CatsExternBaseTest, ATerminatedApplicationHasNoDispatcher) {
  auto orphan = std::make_shared<Categories>();
  EXPECT_EQ(NumberOf([&] { orphan->ExportMasterlist(u"list.txt"); }),
            RunTimeError::kObjectVariableNotSet);
  EXPECT_EQ(NumberOf([&] { orphan->ImportMasterlist(u"list.txt"); }),
            RunTimeError::kObjectVariableNotSet);
  EXPECT_FALSE(CategoriesAccess::Importing(*orphan));
}

TEST_F(CatsExternBaseTest, IsNumericTakesWhatVisualBasicTakes) {
  struct Case {
    const char16_t* field;
    bool numeric;
  };
  const Case cases[] = {
      {u"1", true},    {u" -2 ", true},   {u"3.5", true},  {u".5", true},  {u"1e3", true},
      {u"1D-2", true}, {u"&H1f", true},   {u"&o17", true}, {u"", false},   {u" ", false},
      {u"x", false},   {u"12abc", false}, {u"1e", false},  {u"&H", false}, {u"&O8", false},
      {u"-", false},   {u".", false},     {u"1 2", false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(Utf::ToUtf8(c.field));
    EXPECT_EQ(CatsExternBase::IsNumeric(c.field), c.numeric);
  }
}

TEST_F(CatsExternBaseTest, PlainTextRoundTripCarriesAllButSeparators) {
  // The plain-text form writes names as they are, so what the import
  // splits at (";", "," and CR LF) cannot be carried; everything else can.
  const std::u16string names[] = {
      u"B\u00FCro \u00C4rger", u"\u4ED5\u4E8B", u"\U0001F600 smile", u"\"Boss\"", u"O'Neil",
      u"  blanks  ",           u"line\nfeed",
  };
  ExpectRoundTrip(names, u"/x/list.txt", 1);

  ReadSeeds({});
  cats->Add(u"a;b", true, u"", 1, 1);
  cats->Add(u"c,d", true, u"", 2, 2);
  cats->Add(u"e\r\nf", true, u"", 3, 3);
  cats->ExportMasterlist(u"/x/list.txt");
  ReadSeeds({});
  cats->ImportMasterlist(u"/x/list.txt");
  // "a;b;1;1;c,d;2;2;e\r\nf;3;3;" splits into a, b, 1, 1, c, d, ...: the
  // second field is no number, so every field becomes a name.
  EXPECT_EQ(Listing(), (Lines{"a -2 -2", "b -2 -2", "1 -2 -2", "c -2 -2", "d -2 -2", "2 -2 -2",
                              "e -2 -2", "f -2 -2", "3 -2 -2"}));
}

}  // namespace
}  // namespace t4::test
