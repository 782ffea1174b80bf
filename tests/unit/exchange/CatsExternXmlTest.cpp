#include "exchange/CatsExternXml.h"

#include <gtest/gtest.h>

#include "ErrorNumber.h"
#include "ExchangeFixture.h"

namespace t4::test {
namespace {

class CatsExternXmlTest : public ExchangeTest {
 protected:
  std::u16string Imported(const std::u16string& xml) {
    std::u16string text = xml;
    CatsExternXml().Import(text);
    return text;
  }
};

TEST_F(CatsExternXmlTest, TheExportWritesTheDocumentInItsOrder) {
  ReadSeeds({{u"Home", 7, 2}, {u"B\u00FCro & \"Co\" <x>", 0, 11}});
  files->folders.insert(u"/x");
  cats->ExportMasterlist(u"/x/list.xml");
  EXPECT_EQ(WithoutLayout(Utf::ToUtf8(Got(u"/x/list.xml"))),
            "<?xml version=\"1.0\"?>"
            "<categories default=\"Red Category\" lastSavedTime=\"2007-03-01T13:05:09.042\" "
            "xmlns=\"\"><category xmlns=\"\" name=\"Home\" color=\"7\" keyboardShortcut=\"2\"/>"
            "<category xmlns=\"\" name=\"B\xC3\xBCro &amp; &quot;Co&quot; &lt;x&gt;\" color=\"0\" "
            "keyboardShortcut=\"11\"/></categories>");
  EXPECT_EQ(mapi->words, std::vector<std::u16string>{u"sfUtils"});
}

TEST_F(CatsExternXmlTest, OnlyTheDefaultCategoryExportsAnEmptyList) {
  ReadSeeds({});
  files->folders.insert(u"/x");
  cats->ExportMasterlist(u"/x/list.xml");
  EXPECT_EQ(WithoutLayout(Utf::ToUtf8(Got(u"/x/list.xml"))),
            "<?xml version=\"1.0\"?><categories default=\"Red Category\" "
            "lastSavedTime=\"2007-03-01T13:05:09.042\" xmlns=\"\"/>");
}

TEST_F(CatsExternXmlTest, TheTimeStampTakesItsMillisecondsFromTheTimer) {
  struct Case {
    const char* what;
    double now;
    double timer;
    std::string stamp;
  };
  const double day = 39142.0;  // 2007-03-01
  const Case cases[] = {
      {"as written", day + 0.5, 3600 * 12 + 0.042, "2007-03-01T11:00:00.042"},
      {"rounded to the millisecond", day + 0.5, 7.0004, "2007-03-01T11:00:00.000"},
      {"a half rounds to even", day + 0.5, 7.0125, "2007-03-01T11:00:00.012"},
      {"padded", day + 0.5, 0.005, "2007-03-01T11:00:00.005"},
      {"timer and date disagree", day + 0.5, 1.999, "2007-03-01T11:00:00.999"},
      {"over midnight back", day + 0.5 / 24, 0, "2007-02-28T23:30:00.000"},
      {"seconds rounded", day + 0.5 + 0.6 / 86400, 0, "2007-03-01T11:00:01.000"},
      {"leap day", 39142.0 - 1 + 0.5, 0, "2007-02-28T11:00:00.000"},
      {"year 2000 leap day", 36585.0 + 0.25, 0, "2000-02-29T05:00:00.000"},
  };
  CatsExternXml xml;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    clock->now = c.now;
    clock->timer = c.timer;
    EXPECT_EQ(Utf::ToUtf8(xml.GetTimeStamp()), c.stamp);
  }
}

TEST_F(CatsExternXmlTest, WithoutMapiUtilitiesTheFormatCannotBeMade) {
  mapi->failUtils = true;
  ReadSeeds({{u"Home", 7, 2}});
  files->folders.insert(u"/x");
  try {
    cats->ExportMasterlist(u"/x/list.xml");
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), RunTimeError::kCantCreateObject);
    EXPECT_NE(e.Source().find(u"Tandrel4.CatsExternBase.CreateChild (0)"), std::u16string::npos);
  }
  EXPECT_TRUE(files->files.empty());
}

TEST_F(CatsExternXmlTest, TheImportReadsTheFirstCategoriesElement) {
  struct Case {
    const char* what;
    std::u16string xml;
    std::u16string neutral;
  };
  const Case cases[] = {
      {"own export",
       u"<?xml version=\"1.0\"?>\r\n<categories default=\"Red Category\" "
       u"lastSavedTime=\"2007-03-01T13:05:09.042\" xmlns=\"\"><category xmlns=\"\" name=\"Home\" "
       u"color=\"7\" keyboardShortcut=\"2\"/></categories>\r\n",
       u"Home;7;2"},
      {"Outlook 2007 with more attributes, indented",
       u"<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<categories default=\"Red Category\" "
       u"lastSavedTime=\"2007-03-01T13:05:09.042\" xmlns=\"CategoryList.xsd\">\r\n"
       u"  <category name=\"Red Category\" color=\"0\" keyboardShortcut=\"0\" "
       u"usageCount=\"5\" lastTimeUsedNotes=\"1601-01-01T00:00:00.000\" "
       u"guid=\"{D5A26E40-8A27-4C60-8D4F-6F9B6F3C2A10}\" renameOnFirstUse=\"1\"/>\r\n"
       u"  <category name=\"Work\" color=\"7\" keyboardShortcut=\"3\"/>\r\n</categories>\r\n",
       u"Red Category;0;0;Work;7;3"},
      {"another root name", u"<Categories><category name=\"A\" color=\"1\"/></Categories>", u""},
      {"a prefix does not count",
       u"<x:categories xmlns:x=\"u\"><category name=\"A\" color=\"1\" "
       u"keyboardShortcut=\"2\"/></x:categories>",
       u"A;1;2"},
      {"the first of several", u"<categories><c name=\"A\"/></categories>", u"A;;"},
      {"a missing attribute is an empty field",
       u"<categories><category name=\"A\"/><category name=\"B\" color=\"3\" "
       u"keyboardShortcut=\"1\"/></categories>",
       u"A;;;B;3;1"},
      {"an empty element", u"<categories/>", u""},
      {"not well-formed", u"<categories><category name=\"A\"></categories>", u""},
      {"not XML at all", u"Red;1;0", u""},
      {"empty", u"", u""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(Utf::ToUtf8(Imported(c.xml)), Utf::ToUtf8(c.neutral));
  }
}

TEST_F(CatsExternXmlTest, AMissingColourMakesANameListOfEveryField) {
  ReadSeeds({});
  Put(u"list.xml",
      u"<categories><category name=\"A\"/><category name=\"B\" color=\"3\" "
      u"keyboardShortcut=\"1\"/></categories>");
  cats->ImportMasterlist(u"list.xml");
  EXPECT_EQ(Listing(), (Lines{"A -2 -2", "B -2 -2", "3 -2 -2", "1 -2 -2"}));
}

TEST_F(CatsExternXmlTest, AChildThatIsNoElementFails) {
  ReadSeeds({{u"Red", 1, 0}});
  Put(u"list.xml",
      u"<categories><category name=\"A\" color=\"1\" keyboardShortcut=\"1\"/><!-- note -->"
      u"</categories>");
  try {
    cats->ImportMasterlist(u"list.xml");
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), RunTimeError::kObjectVariableNotSet);
    EXPECT_EQ(Utf::ToUtf8(e.Source()),
              "Tandrel4; Tandrel4.CatsExternXml.ICatsExtern_Import (0); "
              "Tandrel4.CatsExternBase.ImportMasterlist (0); "
              "Tandrel4.Categories.ImportMasterlist (0)");
  }
  EXPECT_EQ(Listing(), Lines{"Red 1 0"});
}

TEST_F(CatsExternXmlTest, HostileDocumentsImportNothingWithoutAnError) {
  const std::u16string cases[] = {
      u"<?xml version=\"1.0\"?><!DOCTYPE lolz [<!ENTITY lol \"lol\">"
      u"<!ENTITY lol2 \"&lol;&lol;&lol;&lol;&lol;&lol;&lol;&lol;&lol;&lol;\">"
      u"<!ENTITY lol3 \"&lol2;&lol2;&lol2;&lol2;&lol2;&lol2;&lol2;&lol2;&lol2;&lol2;\">"
      u"<!ENTITY lol4 \"&lol3;&lol3;&lol3;&lol3;&lol3;&lol3;&lol3;&lol3;&lol3;&lol3;\">]>"
      u"<categories><category name=\"&lol4;\" color=\"1\" keyboardShortcut=\"1\"/></categories>",
      u"<?xml version=\"1.0\"?><!DOCTYPE categories [<!ENTITY x SYSTEM \"file:///etc/hostname\">]>"
      u"<categories><category name=\"&x;\" color=\"1\" keyboardShortcut=\"1\"/></categories>",
      u"<!DOCTYPE categories SYSTEM \"http://localhost:1/list.dtd\"><categories/>",
  };
  for (const auto& xml : cases) {
    SCOPED_TRACE(Utf::ToUtf8(xml.substr(0, 60)));
    ReadSeeds({{u"Red", 1, 0}});
    Put(u"list.xml", xml);
    cats->ImportMasterlist(u"list.xml");
    EXPECT_EQ(Listing(), Lines{"Red 1 0"});
    EXPECT_TRUE(log->events.empty());
  }
}

TEST_F(CatsExternXmlTest, RoundTripsOfWhatTheFormatCarries) {
  // Attribute values carry any character XML 1.0 allows, a lone line feed
  // too (written as a character reference).
  const std::u16string names[] = {
      u"B\u00FCro \u00C4rger",
      u"\u4ED5\u4E8B",
      u"\U0001F600 smile",
      u"\"Boss\"",
      u"O'Neil",
      u"  blanks  ",
      u"line\nfeed",
      u"<&>",
  };
  ExpectRoundTrip(names, u"/x/list.xml", 3);
}

TEST_F(CatsExternXmlTest, WhatTheFormatCannotCarry) {
  struct Case {
    const char* what;
    std::u16string name;
    Lines result;
  };
  const Case cases[] = {
      // The export passes the names through the ";"-separated list and
      // writes two elements, the second one's name being the colour.
      {"semicolon", u"a;b", {"a 0 4", "5 0 0"}},
      // The element is written whole, but the dispatcher splits the
      // neutral list at "," and CR LF: the second field is then no number.
      {"comma", u"a,b", {"a -2 -2", "b -2 -2", "4 -2 -2", "5 -2 -2"}},
      {"CR LF", u"a\r\nb", {"a -2 -2", "b -2 -2", "4 -2 -2", "5 -2 -2"}},
      // No XML 1.0 character: the written file does not parse back.
      {"control character", u"bell\a", {}},
  };
  files->folders.insert(u"/x");
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    ReadSeeds({});
    cats->Add(c.name, true, u"", 4, 5);
    cats->ExportMasterlist(u"/x/list.xml");
    ReadSeeds({});
    cats->ImportMasterlist(u"/x/list.xml");
    EXPECT_EQ(Listing(), c.result);
  }
}

}  // namespace
}  // namespace t4::test
