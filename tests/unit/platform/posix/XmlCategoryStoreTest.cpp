#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <functional>
#include <regex>
#include <set>

#include "platform/posix/RandomGuid.h"
#include "platform/posix/XmlCategoryStore.h"
#include "platform/posix/XmlShapeCheck.h"
#include "platform/posix/XmlTestFiles.h"
#include "support/ErrorObject.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4 {
namespace {

using posix::XmlCategoryStore;
using test::WithoutSaveTime;
using test::XmlTestFiles;

const std::string kRed = "{2B5E9F43-1D8A-4C2E-9F01-7A6B3C4D5E60}";
const std::string kOffice = "{6C1F0A22-93B4-4D7E-8E55-0B9A8C7D6E5F}";
const std::string kPrivate = "{A0B1C2D3-E4F5-4A6B-8C7D-8E9FA0B1C2D3}";

// A list as Outlook writes it, with attributes and elements the store does
// not know, a comment and a name with an umlaut and an ampersand.
const std::string kOutlookList =
    "<?xml version=\"1.0\"?>\n"
    "<categories default=\"Red Category\" lastSavedSession=\"2\" "
    "lastSavedTime=\"2026-11-22T05:00:00.000\" xmlns=\"CategoryList.xsd\">\n"
    "  <category name=\"Red Category\" color=\"0\" keyboardShortcut=\"0\" usageCountNotes=\"3\" "
    "renameOnFirstUse=\"1\" guid=\"" +
    kRed +
    "\"/>\n"
    "  <category name=\"B\xC3\xBCro &amp; Haus\" color=\"7\" keyboardShortcut=\"2\" guid=\"" +
    kOffice +
    "\">\n"
    "    <note lang=\"de\">Gr\xC3\xBC\xC3\x9F"
    "e</note>\n"
    "  </category>\n"
    "  <!-- kept as it is -->\n"
    "  <unknownElement a=\"1\"/>\n"
    "  <category name=\"Privat\" color=\"-1\" keyboardShortcut=\"0\" guid=\"" +
    kPrivate +
    "\"/>\n"
    "</categories>\n";

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  const size_t pos = text.find(from);
  if (pos != std::string::npos) text.replace(pos, from.size(), to);
  return text;
}

std::u16string U(const std::string& utf8) {
  return Utf::FromUtf8(utf8);
}

class XmlCategoryStoreTest : public ::testing::Test {
 protected:
  std::string Path() const { return files.PathOf("categories.xml"); }
  XmlCategoryStore Store() const { return XmlCategoryStore(Path()); }
  void WriteList(const std::string& text) const { XmlTestFiles::Write(Path(), text); }
  std::string FileText() const { return XmlTestFiles::Read(Path()); }

  XmlTestFiles files;
};

TEST_F(XmlCategoryStoreTest, ListsTheCategoriesInFileOrder) {
  WriteList(kOutlookList);
  auto list = Store().List();
  ASSERT_EQ(list.size(), 3u);
  EXPECT_EQ(list[0].id, U(kRed));
  EXPECT_EQ(list[0].name, u"Red Category");
  EXPECT_EQ(list[0].color, 0);
  EXPECT_EQ(list[0].shortCut, 0);
  EXPECT_EQ(list[1].id, U(kOffice));
  EXPECT_EQ(list[1].name, u"B\u00fcro & Haus");
  EXPECT_EQ(list[1].color, 7);
  EXPECT_EQ(list[1].shortCut, 2);
  EXPECT_EQ(list[2].name, u"Privat");
  EXPECT_EQ(list[2].color, -1);
}

TEST_F(XmlCategoryStoreTest, AbsentColourAndShortcutAreNone) {
  WriteList("<categories><category name=\"A\" guid=\"{1}\"/></categories>");
  auto list = Store().List();
  ASSERT_EQ(list.size(), 1u);
  EXPECT_EQ(list[0].color, -1);
  EXPECT_EQ(list[0].shortCut, 0);
}

TEST_F(XmlCategoryStoreTest, UpdateChangesOnlyTheTouchedAttributes) {
  WriteList(kOutlookList);
  XmlCategoryStore store = Store();
  store.Update({U(kOffice), u"B\u00fcro & Haus", 8, 2});
  store.Commit();
  const std::string text = FileText();
  EXPECT_EQ(WithoutSaveTime(text),
            WithoutSaveTime(Replaced(kOutlookList, "color=\"7\"", "color=\"8\"")));
  std::smatch time;
  ASSERT_TRUE(std::regex_search(text, time, std::regex("lastSavedTime=\"([^\"]*)\"")));
  EXPECT_TRUE(
      std::regex_match(time[1].str(), std::regex(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3})")))
      << time[1];
  EXPECT_NE(time[1].str(), "2026-11-22T05:00:00.000");
}

TEST_F(XmlCategoryStoreTest, RenameAndShortcut) {
  WriteList(kOutlookList);
  XmlCategoryStore store = Store();
  store.Update({U(kRed), u"Rot", 0, 11});
  store.Commit();
  EXPECT_EQ(WithoutSaveTime(FileText()),
            WithoutSaveTime(Replaced(kOutlookList,
                                     "name=\"Red Category\" color=\"0\" keyboardShortcut=\"0\"",
                                     "name=\"Rot\" color=\"0\" keyboardShortcut=\"11\"")));
}

TEST_F(XmlCategoryStoreTest, CommitWithoutAChangeLeavesTheFileAlone) {
  WriteList(kOutlookList);
  XmlCategoryStore store = Store();
  store.List();
  store.Update({U(kPrivate), u"Privat", -1, 0});  // the values it already has
  store.Commit();
  EXPECT_EQ(FileText(), kOutlookList);
}

TEST_F(XmlCategoryStoreTest, AddAppendsAnElementWithAFreshGuid) {
  WriteList(kOutlookList);
  XmlCategoryStore store = Store();
  const std::u16string id = store.Add({u"", u"Neu", 3, 2});
  EXPECT_TRUE(std::regex_match(Utf::ToUtf8(id),
                               std::regex(R"(\{[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\})")))
      << Utf::ToUtf8(id);
  EXPECT_EQ(store.List().back().id, id);
  store.Commit();
  const std::string added = "  <category name=\"Neu\" color=\"3\" keyboardShortcut=\"2\" guid=\"" +
                            Utf::ToUtf8(id) + "\"/>\n";
  EXPECT_EQ(WithoutSaveTime(FileText()),
            WithoutSaveTime(Replaced(kOutlookList, "</categories>", added + "</categories>")));
  auto reread = Store().List();
  ASSERT_EQ(reread.size(), 4u);
  EXPECT_EQ(reread[3].id, id);
  EXPECT_EQ(reread[3].name, u"Neu");
  EXPECT_EQ(reread[3].color, 3);
  EXPECT_EQ(reread[3].shortCut, 2);
}

TEST_F(XmlCategoryStoreTest, RemoveDeletesTheElementWithItsContent) {
  WriteList(kOutlookList);
  XmlCategoryStore store = Store();
  store.Remove(U(kOffice));
  store.Commit();
  const std::string office =
      "  <category name=\"B\xC3\xBCro &amp; Haus\" color=\"7\" "
      "keyboardShortcut=\"2\" guid=\"" +
      kOffice +
      "\">\n"
      "    <note lang=\"de\">Gr\xC3\xBC\xC3\x9F"
      "e</note>\n"
      "  </category>\n";
  EXPECT_EQ(WithoutSaveTime(FileText()), WithoutSaveTime(Replaced(kOutlookList, office, "")));
  EXPECT_EQ(Store().List().size(), 2u);
}

TEST_F(XmlCategoryStoreTest, IdentifiersCompareWithoutLetterCase) {
  WriteList(kOutlookList);
  XmlCategoryStore store = Store();
  std::string lower = kPrivate;
  for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  store.Remove(U(lower));
  EXPECT_EQ(store.List().size(), 2u);
}

TEST_F(XmlCategoryStoreTest, UnknownIdentifierRaisesSubscriptOutOfRange) {
  WriteList(kOutlookList);
  XmlCategoryStore store = Store();
  struct Case {
    const char* what;
    std::function<void()> call;
  };
  const Case cases[] = {
      {"update",
       [&] {
         store.Update({u"{X}", u"X", 1, 0});
       }},
      {"remove", [&] { store.Remove(u"{X}"); }},
      {"remove empty", [&] { store.Remove(u""); }},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    try {
      c.call();
      ADD_FAILURE() << "no error";
    } catch (const Error& e) {
      EXPECT_EQ(e.Number(), RunTimeError::kSubscriptOutOfRange);
    }
  }
  store.Commit();
  EXPECT_EQ(FileText(), kOutlookList);
}

TEST_F(XmlCategoryStoreTest, UmlautsAndMarkupCharactersRoundTrip) {
  const std::u16string name =
      u"Gr\u00fc\u00dfe \u00e4\u00f6\u00fc \u00c4\u00d6\u00dc \u03a9 <\"&'> \U0001F600";
  {
    XmlCategoryStore store = Store();
    store.Add({u"", name, 5, 0});
    store.Commit();
  }
  const std::string text = FileText();
  EXPECT_NE(text.find("Gr\xC3\xBC\xC3\x9F"
                      "e \xC3\xA4\xC3\xB6\xC3\xBC"),
            std::string::npos)
      << text;
  EXPECT_EQ(text.find("&#"), std::string::npos) << text;
  auto list = Store().List();
  ASSERT_EQ(list.size(), 1u);
  EXPECT_EQ(list[0].name, name);
}

TEST_F(XmlCategoryStoreTest, MissingFileIsAnEmptyListAndCreatedOnTheFirstChange) {
  XmlCategoryStore store = Store();
  EXPECT_TRUE(store.List().empty());
  store.Commit();
  EXPECT_EQ(FileText(), "<missing>");
  const std::u16string id = store.Add({u"", u"Erste", 0, 1});
  store.Commit();
  EXPECT_EQ(WithoutSaveTime(FileText()),
            "<?xml version=\"1.0\"?>\n"
            "<categories default=\"\" lastSavedSession=\"0\" lastSavedTime=\"*\" "
            "xmlns=\"CategoryList.xsd\">\n"
            "  <category name=\"Erste\" color=\"0\" keyboardShortcut=\"1\" guid=\"" +
                Utf::ToUtf8(id) +
                "\"/>\n"
                "</categories>\n");
}

TEST_F(XmlCategoryStoreTest, MissingFolderIsCreatedOnCommit) {
  XmlCategoryStore store(files.PathOf("a/b/categories.xml"));
  store.Add({u"", u"X", -1, 0});
  store.Commit();
  EXPECT_EQ(XmlCategoryStore(files.PathOf("a/b/categories.xml")).List().size(), 1u);
}

TEST_F(XmlCategoryStoreTest, RemovingTheLastAndAddingAgainKeepsTheLayout) {
  WriteList(kOutlookList);
  XmlCategoryStore store = Store();
  for (const auto& entry : store.List()) store.Remove(entry.id);
  const std::u16string id = store.Add({u"", u"Allein", 2, 0});
  store.Commit();
  EXPECT_EQ(WithoutSaveTime(FileText()),
            WithoutSaveTime("<?xml version=\"1.0\"?>\n"
                            "<categories default=\"Red Category\" lastSavedSession=\"2\" "
                            "lastSavedTime=\"x\" xmlns=\"CategoryList.xsd\">\n"
                            "  <!-- kept as it is -->\n"
                            "  <unknownElement a=\"1\"/>\n"
                            "  <category name=\"Allein\" color=\"2\" keyboardShortcut=\"0\" "
                            "guid=\"" +
                            Utf::ToUtf8(id) +
                            "\"/>\n"
                            "</categories>\n"));
}

TEST_F(XmlCategoryStoreTest, CompactFileStaysCompact) {
  WriteList(
      "<?xml version=\"1.0\" encoding=\"utf-8\"?><categories lastSavedTime=\"\">"
      "<category name=\"A\" guid=\"{1}\"/></categories>");
  XmlCategoryStore store = Store();
  const std::u16string id = store.Add({u"", u"B", 1, 0});
  store.Commit();
  EXPECT_EQ(WithoutSaveTime(FileText()),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<categories lastSavedTime=\"*\">"
            "<category name=\"A\" guid=\"{1}\"/><category name=\"B\" color=\"1\" "
            "keyboardShortcut=\"0\" guid=\"" +
                Utf::ToUtf8(id) + "\"/></categories>\n");
}

TEST_F(XmlCategoryStoreTest, MalformedFilesAreRejectedAndLeftAlone) {
  struct Case {
    const char* what;
    std::string text;
    const char* reason;  // part of the description
  };
  const Case cases[] = {
      {"not XML", "Red Category;0;0\n", "line 1"},
      {"empty", "", "line 1"},
      {"wrong root", "<rules><rule/></rules>", "root element is not <categories>"},
      {"truncated", kOutlookList.substr(0, kOutlookList.size() / 2), "line"},
      {"no name", "<categories><category color=\"1\" guid=\"{1}\"/></categories>",
       "line 1: <category> without a name"},
      {"empty name", "<categories>\n<category name=\"\" guid=\"{1}\"/></categories>",
       "line 2: <category> without a name"},
      {"no guid", "<categories><category name=\"A\"/></categories>", "without a guid"},
      {"guid twice",
       "<categories><category name=\"A\" guid=\"{1}\"/><category name=\"B\" guid=\"{1}\"/>"
       "</categories>",
       "repeats guid {1}"},
      {"colour no number",
       "<categories><category name=\"A\" guid=\"{1}\" color=\"red\"/></categories>",
       "color \"red\""},
      {"shortcut too large",
       "<categories><category name=\"A\" guid=\"{1}\" keyboardShortcut=\"99999999999\"/>"
       "</categories>",
       "keyboardShortcut"},
      {"document type",
       "<!DOCTYPE categories [<!ENTITY x \"y\">]><categories><category name=\"&x;\" "
       "guid=\"{1}\"/></categories>",
       "document type declaration"},
      {"external entity",
       "<!DOCTYPE categories [<!ENTITY x SYSTEM \"file:///etc/passwd\">]>"
       "<categories><category name=\"&x;\" guid=\"{1}\"/></categories>",
       "document type declaration"},
      {"external DTD", "<!DOCTYPE categories SYSTEM \"http://example.invalid/c.dtd\"><categories/>",
       "document type declaration"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    WriteList(c.text);
    XmlCategoryStore store = Store();
    for (int attempt = 0; attempt < 2; ++attempt) {
      try {
        if (attempt == 0) {
          store.List();
        } else {
          store.Add({u"", u"X", 0, 0});
          store.Commit();
        }
        ADD_FAILURE() << "no error";
      } catch (const Error& e) {
        EXPECT_EQ(e.Number(), cmFileTypeNotSupported);
        const std::string description = Utf::ToUtf8(e.Description());
        EXPECT_NE(description.find(Path()), std::string::npos) << description;
        EXPECT_NE(description.find(c.reason), std::string::npos) << description;
        EXPECT_EQ(
            description.rfind(Utf::ToUtf8(ErrorObject::GetMessage(cmFileTypeNotSupported)), 0), 0u)
            << description;
      }
    }
    EXPECT_EQ(FileText(), c.text);
    EXPECT_EQ(files.Names(), std::vector<std::string>{"categories.xml"});
  }
}

TEST_F(XmlCategoryStoreTest, AFileRepairedOnDiskIsReadAgain) {
  WriteList("<categories>");
  XmlCategoryStore store = Store();
  EXPECT_THROW(store.List(), Error);
  WriteList(kOutlookList);
  EXPECT_EQ(store.List().size(), 3u);
}

TEST_F(XmlCategoryStoreTest, ChangesOnDiskAreSeenUnlessChangesArePending) {
  WriteList(kOutlookList);
  XmlCategoryStore first = Store();
  ASSERT_EQ(first.List().size(), 3u);
  {
    XmlCategoryStore second = Store();
    second.Add({u"", u"Von anderswo", 1, 0});
    second.Commit();
  }
  EXPECT_EQ(first.List().size(), 4u);
  // Our own pending change wins; the commit then replaces the other's.
  first.Remove(U(kRed));
  XmlCategoryStore third = Store();
  third.Remove(U(kPrivate));
  third.Commit();
  auto list = first.List();
  ASSERT_EQ(list.size(), 3u);
  EXPECT_EQ(list[0].id, U(kOffice));
  first.Commit();
  EXPECT_EQ(Store().List().size(), 3u);
}

TEST_F(XmlCategoryStoreTest, TheFileIsReplacedWholeAndKeepsItsPermissions) {
  WriteList(kOutlookList);
  ASSERT_EQ(::chmod(Path().c_str(), 0640), 0);
  struct stat before {};
  ASSERT_EQ(::stat(Path().c_str(), &before), 0);
  XmlCategoryStore store = Store();
  store.Add({u"", u"Neu", 1, 0});
  store.Commit();
  struct stat after {};
  ASSERT_EQ(::stat(Path().c_str(), &after), 0);
  EXPECT_NE(after.st_ino, before.st_ino);  // a new file renamed into place
  EXPECT_EQ(after.st_mode & 07777, 0640u);
  EXPECT_EQ(files.Names(), std::vector<std::string>{"categories.xml"});  // no temporary left
}

TEST_F(XmlCategoryStoreTest, ANewFileIsTheUsersOwnAndALinkStaysALink) {
  XmlCategoryStore fresh = Store();
  fresh.Add({u"", u"Neu", 1, 0});
  fresh.Commit();
  struct stat info {};
  ASSERT_EQ(::stat(Path().c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 07777, 0600u);
  // The list kept elsewhere behind a link: the list is replaced, the link stays.
  const std::string target = files.PathOf("elsewhere.xml");
  ASSERT_EQ(std::rename(Path().c_str(), target.c_str()), 0);
  ASSERT_EQ(::symlink("elsewhere.xml", Path().c_str()), 0);
  XmlCategoryStore linked = Store();
  ASSERT_EQ(linked.List().size(), 1u);
  linked.Add({u"", u"Noch eins", 2, 0});
  linked.Commit();
  EXPECT_TRUE(std::filesystem::is_symlink(Path()));
  EXPECT_EQ(Store().List().size(), 2u);
  EXPECT_EQ(files.Names(), (std::vector<std::string>{"categories.xml", "elsewhere.xml"}));
}

TEST_F(XmlCategoryStoreTest, AFailedWriteRaisesCreateFileAndLeavesNothing) {
  XmlTestFiles::Write(files.PathOf("plain"), "a file, not a folder");
  const std::string path = files.PathOf("plain/categories.xml");
  XmlCategoryStore store(path);
  store.Add({u"", u"X", 0, 0});
  try {
    store.Commit();
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), cmCreateFile);
    EXPECT_NE(Utf::ToUtf8(e.Description()).find(path), std::string::npos);
  }
  EXPECT_EQ(files.Names(), std::vector<std::string>{"plain"});
}

TEST_F(XmlCategoryStoreTest, EncodingsAndByteOrderMarks) {
  struct Case {
    const char* what;
    std::string in;
    std::string outStart;
  };
  const std::string body = "<categories><category name=\"\xC3\x84\" guid=\"{1}\"/></categories>";
  // The same document in UTF-16LE with byte-order mark.
  std::string utf16 = "\xFF\xFE";
  for (char16_t c : u"<categories><category name=\"\u00c4\" guid=\"{1}\"/></categories>") {
    if (c == 0) break;
    utf16 += static_cast<char>(c & 0xFF);
    utf16 += static_cast<char>(c >> 8);
  }
  const Case cases[] = {
      {"UTF-8", "<?xml version=\"1.0\"?>" + body,
       "<?xml version=\"1.0\"?>\n<categories lastSavedTime="},
      {"UTF-8 with mark", "\xEF\xBB\xBF<?xml version=\"1.0\"?>" + body,
       "\xEF\xBB\xBF<?xml version=\"1.0\"?>\n<categories lastSavedTime="},
      {"declared", "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>" + body,
       "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n<categories lastSavedTime="},
      {"Latin-1",
       "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>"
       "<categories><category name=\"\xC4\" guid=\"{1}\"/></categories>",
       "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<categories lastSavedTime="},
      {"UTF-16", utf16, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<categories lastSavedTime="},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    WriteList(c.in);
    XmlCategoryStore store = Store();
    ASSERT_EQ(store.List().size(), 1u);
    EXPECT_EQ(store.List()[0].name, u"\u00c4");
    store.Update({u"{1}", u"\u00c4\u00e4", 0, 0});
    store.Commit();
    const std::string text = FileText();
    EXPECT_EQ(text.rfind(c.outStart, 0), 0u) << text;
    EXPECT_NE(text.find("name=\"\xC3\x84\xC3\xA4\""), std::string::npos) << text;
    EXPECT_EQ(Store().List()[0].name, u"\u00c4\u00e4");
  }
}

TEST(RandomGuid, Version4InBracesUpperCase) {
  const std::regex form(
      R"(\{[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\})");
  std::set<std::u16string> seen;
  for (int i = 0; i < 200; ++i) {
    const std::u16string guid = posix::RandomGuid::Make();
    EXPECT_TRUE(std::regex_match(Utf::ToUtf8(guid), form)) << Utf::ToUtf8(guid);
    seen.insert(guid);
  }
  EXPECT_EQ(seen.size(), 200u);
}

TEST_F(XmlCategoryStoreTest, LargeListReadsBackExactlyAndUpdatesEveryCategory) {
  constexpr int kMany = 100000;
  std::string text = "<categories default=\"\" xmlns=\"CategoryList.xsd\">\n";
  for (int i = 0; i < kMany; ++i) {
    text += "  <category name=\"K" + std::to_string(i) + "\" color=\"" + std::to_string(i % 25) +
            "\" guid=\"{G" + std::to_string(i) + "}\"/>\n";
  }
  WriteList(text + "</categories>\n");
  XmlCategoryStore store = Store();
  const auto list = store.List();
  ASSERT_EQ(list.size(), static_cast<size_t>(kMany));
  for (int i = 0; i < kMany; i += 991) {
    SCOPED_TRACE(i);
    EXPECT_EQ(list[static_cast<size_t>(i)].name, U("K" + std::to_string(i)));
    EXPECT_EQ(list[static_cast<size_t>(i)].color, i % 25);
    EXPECT_EQ(list[static_cast<size_t>(i)].id, U("{G" + std::to_string(i) + "}"));
  }
  // A save touches every category; each is found through the index.
  for (auto category : list) {
    category.name += u"!";
    store.Update(category);
  }
  store.Remove(u"{g5}");
  EXPECT_THROW(store.Remove(u"{G5}"), Error);
  const std::u16string added = store.Add({u"", u"Neu", 3, 0});
  store.Update({added, u"Neu!", 3, 0});
  store.Commit();
  const auto back = Store().List();
  ASSERT_EQ(back.size(), static_cast<size_t>(kMany));
  EXPECT_EQ(back[4].name, u"K4!");
  EXPECT_EQ(back[5].name, u"K6!");
  EXPECT_EQ(back.back().name, u"Neu!");
}

TEST_F(XmlCategoryStoreTest, RootWithThousandsOfAttributesIsRefused) {
  std::string attributes;
  for (int i = 0; i < 8000; ++i) attributes += " xmlns:p" + std::to_string(i) + "=\"u\"";
  const std::string text = "<categories" + attributes + " xmlns=\"CategoryList.xsd\"/>";
  WriteList(text);
  try {
    Store().List();
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), cmFileTypeNotSupported);
  }
  EXPECT_EQ(FileText(), text);
}

TEST_F(XmlCategoryStoreTest, FileLargerThanAnyListIsRefusedUnread) {
  WriteList(kOutlookList);
  XmlCategoryStore store = Store();
  ASSERT_EQ(store.List().size(), 3u);
  // A sparse file: its size alone refuses it.
  ASSERT_EQ(::truncate(Path().c_str(), static_cast<off_t>(posix::XmlShapeCheck::kMaxBytes + 1)), 0);
  try {
    store.List();
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), cmFileTypeNotSupported);
    EXPECT_NE(Utf::ToUtf8(e.Description()).find("larger than 64 MiB"), std::string::npos);
  }
}

}  // namespace
}  // namespace t4
