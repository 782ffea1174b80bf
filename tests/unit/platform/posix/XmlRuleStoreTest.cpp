#include <gtest/gtest.h>

#include "platform/posix/XmlRuleStore.h"
#include "platform/posix/XmlTestFiles.h"
#include "support/ErrorObject.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4 {
namespace {

using posix::XmlRuleStore;
using test::XmlTestFiles;
using Names = std::vector<std::u16string>;

const std::string kRules =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<rules>\n"
    "  <rule name=\"Vom Chef\" enabled=\"1\">\n"
    "    <condition><category>B\xC3\xBCro</category></condition>\n"
    "    <assign>\n"
    "      <category>Dringend</category>\n"
    "      <category>Chef &amp; Co</category>\n"
    "    </assign>\n"
    "    <stop/>\n"
    "  </rule>\n"
    "  <rule name=\"Nur Bedingung\">\n"
    "    <condition>\n"
    "      <category>Privat</category>\n"
    "    </condition>\n"
    "  </rule>\n"
    "</rules>\n";

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  const size_t pos = text.find(from);
  if (pos != std::string::npos) text.replace(pos, from.size(), to);
  return text;
}

class XmlRuleStoreTest : public ::testing::Test {
 protected:
  std::string Path() const { return files.PathOf("rules.xml"); }
  XmlRuleStore Store() const { return XmlRuleStore(Path()); }
  void WriteRules(const std::string& text) const { XmlTestFiles::Write(Path(), text); }
  std::string FileText() const { return XmlTestFiles::Read(Path()); }

  XmlTestFiles files;
};

TEST_F(XmlRuleStoreTest, ReadsConditionsAndActions) {
  WriteRules(kRules);
  XmlRuleStore store = Store();
  ASSERT_EQ(store.Count(), 2);
  EXPECT_EQ(store.Categories(0, false), (Names{u"B\u00fcro"}));
  EXPECT_EQ(store.Categories(0, true), (Names{u"Dringend", u"Chef & Co"}));
  EXPECT_EQ(store.Categories(1, false), (Names{u"Privat"}));
  EXPECT_EQ(store.Categories(1, true), Names{});
}

TEST_F(XmlRuleStoreTest, RenameInPlaceChangesOnlyTheText) {
  WriteRules(kRules);
  XmlRuleStore store = Store();
  store.SetCategories(0, false, {u"Arbeit <neu>"});
  store.SetCategories(0, true, {u"Dringend", u"Chefin & Co"});
  store.Save();
  EXPECT_EQ(FileText(), Replaced(Replaced(kRules, "B\xC3\xBCro", "Arbeit &lt;neu&gt;"),
                                 "Chef &amp;", "Chefin &amp;"));
  EXPECT_EQ(Store().Categories(0, false), (Names{u"Arbeit <neu>"}));
}

TEST_F(XmlRuleStoreTest, MoreOrFewerNamesAndANewList) {
  WriteRules(kRules);
  XmlRuleStore store = Store();
  store.SetCategories(0, true, {u"Dringend"});
  store.SetCategories(1, false, {u"Privat", u"Familie"});
  store.SetCategories(1, true, {u"\u00c4"});
  store.Save();
  const std::string expected =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<rules>\n"
      "  <rule name=\"Vom Chef\" enabled=\"1\">\n"
      "    <condition><category>B\xC3\xBCro</category></condition>\n"
      "    <assign>\n"
      "      <category>Dringend</category>\n"
      "    </assign>\n"
      "    <stop/>\n"
      "  </rule>\n"
      "  <rule name=\"Nur Bedingung\">\n"
      "    <condition>\n"
      "      <category>Privat</category>\n"
      "      <category>Familie</category>\n"
      "    </condition>\n"
      "    <assign>\n"
      "      <category>\xC3\x84</category>\n"
      "    </assign>\n"
      "  </rule>\n"
      "</rules>\n";
  EXPECT_EQ(FileText(), expected);
  XmlRuleStore reread = Store();
  EXPECT_EQ(reread.Categories(1, false), (Names{u"Privat", u"Familie"}));
  EXPECT_EQ(reread.Categories(1, true), (Names{u"\u00c4"}));
}

TEST_F(XmlRuleStoreTest, SaveWithoutAChangeLeavesTheFileAlone) {
  WriteRules(kRules);
  XmlRuleStore store = Store();
  store.SetCategories(0, false, {u"B\u00fcro"});
  store.SetCategories(1, true, {});
  store.Save();
  EXPECT_EQ(FileText(), kRules);
}

TEST_F(XmlRuleStoreTest, MissingFileHoldsNoRules) {
  XmlRuleStore store = Store();
  EXPECT_EQ(store.Count(), 0);
  store.Save();
  EXPECT_EQ(FileText(), "<missing>");
  EXPECT_TRUE(files.Names().empty());
}

TEST_F(XmlRuleStoreTest, IndexOutsideTheRulesRaisesSubscriptOutOfRange) {
  WriteRules(kRules);
  XmlRuleStore store = Store();
  for (int32_t index : {-1, 2, 100}) {
    SCOPED_TRACE(index);
    try {
      store.Categories(index, false);
      ADD_FAILURE() << "no error";
    } catch (const Error& e) {
      EXPECT_EQ(e.Number(), RunTimeError::kSubscriptOutOfRange);
    }
    EXPECT_THROW(store.SetCategories(index, true, {u"X"}), Error);
  }
}

TEST_F(XmlRuleStoreTest, MalformedFilesAreRejectedAndLeftAlone) {
  struct Case {
    const char* what;
    std::string text;
  };
  const Case cases[] = {
      {"not XML", "rule: Work -> Urgent\n"},
      {"wrong root", "<categories/>"},
      {"truncated", kRules.substr(0, 60)},
      {"document type", "<!DOCTYPE rules [<!ENTITY a \"b\">]><rules/>"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    WriteRules(c.text);
    XmlRuleStore store = Store();
    try {
      store.Count();
      ADD_FAILURE() << "no error";
    } catch (const Error& e) {
      EXPECT_EQ(e.Number(), cmFileTypeNotSupported);
      EXPECT_NE(Utf::ToUtf8(e.Description()).find(Path()), std::string::npos);
    }
    store.Save();
    EXPECT_EQ(FileText(), c.text);
  }
}

TEST_F(XmlRuleStoreTest, SaveReplacesTheFileWhole) {
  WriteRules(kRules);
  XmlRuleStore store = Store();
  store.SetCategories(1, false, {u"Familie"});
  store.Save();
  EXPECT_EQ(files.Names(), std::vector<std::string>{"rules.xml"});
  EXPECT_EQ(Store().Categories(1, false), (Names{u"Familie"}));
}

TEST_F(XmlRuleStoreTest, LargeFileReadsBackExactlyAndFollowsAChangeOnDisk) {
  constexpr int kMany = 100000;
  std::string text = "<rules>\n";
  for (int i = 0; i < kMany; ++i) {
    text += "  <rule><condition><category>C" + std::to_string(i) +
            "</category></condition><assign><category>A" + std::to_string(i) +
            "</category><category>B</category></assign></rule>\n";
  }
  WriteRules(text + "</rules>\n");
  XmlRuleStore store = Store();
  ASSERT_EQ(store.Count(), kMany);
  for (int i = 0; i < kMany; i += 997) {
    SCOPED_TRACE(i);
    EXPECT_EQ(store.Categories(i, false), (Names{u"C" + Utf::FromUtf8(std::to_string(i))}));
    EXPECT_EQ(store.Categories(i, true), (Names{u"A" + Utf::FromUtf8(std::to_string(i)), u"B"}));
  }
  EXPECT_EQ(store.Categories(kMany - 1, false), (Names{u"C99999"}));
  EXPECT_THROW(store.Categories(kMany, false), Error);
  // The positions follow the file when it changes on disk.
  WriteRules(kRules);
  EXPECT_EQ(store.Count(), 2);
  EXPECT_EQ(store.Categories(1, false), (Names{u"Privat"}));
}

TEST_F(XmlRuleStoreTest, ElementWithTooManyAttributesIsRefusedAndTheFileKept) {
  std::string attributes;
  for (int i = 0; i < 5000; ++i) attributes += " a" + std::to_string(i) + "=\"x\"";
  const std::string text = "<rules>\n  <rule" + attributes + "/>\n</rules>\n";
  WriteRules(text);
  XmlRuleStore store = Store();
  try {
    store.Count();
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), cmFileTypeNotSupported);
    EXPECT_NE(Utf::ToUtf8(e.Description()).find("line 2: an element with more than 256 attributes"),
              std::string::npos)
        << Utf::ToUtf8(e.Description());
  }
  EXPECT_EQ(FileText(), text);
}

}  // namespace
}  // namespace t4
