#include "exchange/CatsExternCsv.h"

#include <gtest/gtest.h>

#include "ErrorNumber.h"
#include "ExchangeFixture.h"
#include "support/ProcessValues.h"

namespace t4::test {
namespace {

class CatsExternCsvTest : public ExchangeTest {};

TEST_F(CatsExternCsvTest, ANameIsQuotedOnlyWhenItNeedsIt) {
  struct Case {
    const char* what;
    std::u16string delimiter;
    std::u16string name;
    std::u16string written;
  };
  const Case cases[] = {
      {"empty", u";", u"", u""},
      {"plain", u";", u"Red", u"Red"},
      {"blanks are no reason", u";", u" Red ", u" Red "},
      {"the delimiter", u";", u"Home; private", u"\"Home; private\""},
      {"a comma under ;", u";", u"a,b", u"a,b"},
      {"a comma under ,", u",", u"a,b", u"\"a,b\""},
      {"a semicolon under ,", u",", u"a;b", u"a;b"},
      {"CR LF becomes LF", u";", u"a\r\nb", u"\"a\nb\""},
      {"lone CR", u";", u"a\rb", u"\"a\rb\""},
      {"apostrophe", u";", u"O'Neil", u"\"O'Neil\""},
      {"quote inside is not doubled", u";", u"a\"b", u"\"a\"b\""},
      {"leading quote doubled", u";", u"\"Quoted", u"\"\"\"Quoted\""},
      {"trailing quote doubled", u";", u"Quoted\"", u"\"Quoted\"\"\""},
      {"both", u";", u"\"Boss\"", u"\"\"\"Boss\"\"\""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    ProcessValues::SetCsvDelimiter(c.delimiter);
    EXPECT_EQ(Utf::ToUtf8(CatsExternCsv::Convert(c.name)), Utf::ToUtf8(c.written));
  }
}

TEST_F(CatsExternCsvTest, TheExportHasOneLineEachWithoutAFinalLineBreak) {
  ReadSeeds({{u"Red", 1, 0}, {u"Home; private", 7, 2}, {u"\"Quoted", 0, 0}, {u"None", -2, -2}});
  files->folders.insert(u"/x");
  cats->ExportMasterlist(u"/x/list.csv");
  EXPECT_EQ(Utf::ToUtf8(Got(u"/x/list.csv")),
            "Red;1;0\r\n\"Home; private\";7;2\r\n\"\"\"Quoted\";0;0\r\nNone;-2;-2");
  ProcessValues::SetCsvDelimiter(u",");
  cats->ExportMasterlist(u"/x/list.csv");
  EXPECT_EQ(Utf::ToUtf8(Got(u"/x/list.csv")),
            "Red,1,0\r\nHome; private,7,2\r\n\"\"\"Quoted\",0,0\r\nNone,-2,-2");
}

TEST_F(CatsExternCsvTest, TheImportStripsQuotesAfterSplitting) {
  struct Case {
    const char* what;
    std::u16string text;
    std::u16string neutral;
  };
  const Case cases[] = {
      {"plain", u"Red;1;0\r\nBlue;7;2", u"Red;1;0;Blue;7;2"},
      {"comma delimiter", u"Red,1,0\r\nBlue,7,2", u"Red;1;0;Blue;7;2"},
      {"doubled quotes", u"\"\"\"Boss\"\"\";0;0", u"\"Boss\";0;0"},
      {"quoted delimiter splits", u"\"Home; private\";7;2", u"Home; private;7;2"},
      {"LF stays in the name", u"\"a\nb\";1;1", u"a\nb;1;1"},
      {"empty fields stay", u";;x", u";;x"},
      {"unterminated quote", u"\"Red;1;0", u"Red;1;0"},
      {"a lone quote", u"\";1;0", u";1;0"},
      {"two quotes", u"\"\";1;0", u";1;0"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    std::u16string text = c.text;
    CatsExternCsv().Import(text);
    EXPECT_EQ(Utf::ToUtf8(text), Utf::ToUtf8(c.neutral));
  }
}

TEST_F(CatsExternCsvTest, RoundTripsOfWhatTheFormatCarries) {
  // Carried: any name without ";", "," or CR LF; a quote inside the name,
  // a leading or a trailing one, apostrophes, blanks, a lone LF.
  const std::u16string names[] = {
      u"B\u00FCro \u00C4rger",
      u"\u4ED5\u4E8B",
      u"\U0001F600 smile",
      u"\"Boss\"",
      u"O'Neil",
      u"  blanks  ",
      u"line\nfeed",
      u"a\"b",
      u"\"\"two",
      u"x'\"",
  };
  for (const char16_t* delimiter : {u";", u","}) {
    SCOPED_TRACE(Utf::ToUtf8(delimiter));
    ProcessValues::SetCsvDelimiter(delimiter);
    ExpectRoundTrip(names, u"/x/list.csv", 2);
  }
}

TEST_F(CatsExternCsvTest, WhatTheFormatCannotCarry) {
  // The quotes are taken off only after the text is split at ";" and ",",
  // so a name with either comes back as two; CR LF inside a name is written
  // as LF (a CSV line ends with CR LF).
  ReadSeeds({{u"Home; private", 7, 2}, {u"a,b", 1, 1}, {u"c\r\nd", 3, 3}});
  files->folders.insert(u"/x");
  cats->ExportMasterlist(u"/x/list.csv");
  ReadSeeds({});
  cats->ImportMasterlist(u"/x/list.csv");
  // "Home; private";7;2 CR LF a,b;1;1 CR LF "c LF d";3;3 splits into
  // Home, private, 7, 2, a, b, ...: the second field is no number.
  EXPECT_EQ(Listing(), (Lines{"Home -2 -2", " private -2 -2", "7 -2 -2", "2 -2 -2", "a -2 -2",
                              "b -2 -2", "1 -2 -2", "c\nd -2 -2", "3 -2 -2"}));
}

TEST_F(CatsExternCsvTest, ALineOfOneCategoryImportsItsValues) {
  ReadSeeds({{u"Red", 1, 0}});
  Put(u"list.csv", u"\"\"\"Boss\"\"\";4;5\r\nRed;2;3");
  cats->ImportMasterlist(u"list.csv");
  EXPECT_EQ(Listing(), (Lines{"Red 2 3", "\"Boss\" 4 5"}));
}

}  // namespace
}  // namespace t4::test
