#include <gtest/gtest.h>
#include <stdlib.h>

#include <regex>

#include "SessionFixture.h"
#include "model/internal/ItemIndex.h"
#include "platform/common/DefaultPorts.h"
#include "platform/posix/XmlCategoryStore.h"
#include "platform/posix/XmlRulesLibrary.h"
#include "platform/posix/XmlRulesStorage.h"
#include "platform/posix/XmlTestFiles.h"
#include "session/internal/ApplicationAccess.h"
#include "support/ErrorObject.h"
#include "support/Ports.h"

namespace t4 {
namespace {

using test::XmlTestFiles;
using Names = std::vector<std::u16string>;

const char kRed[] = "{2B5E9F43-1D8A-4C2E-9F01-7A6B3C4D5E60}";
const char kOffice[] = "{6C1F0A22-93B4-4D7E-8E55-0B9A8C7D6E5F}";
const char kPrivate[] = "{A0B1C2D3-E4F5-4A6B-8C7D-8E9FA0B1C2D3}";

const std::string kCategories =
    std::string(
        "<?xml version=\"1.0\"?>\n"
        "<categories default=\"\" lastSavedSession=\"1\" "
        "lastSavedTime=\"2026-11-22T05:00:00.000\" xmlns=\"CategoryList.xsd\">\n"
        "  <category name=\"Rot\" color=\"0\" keyboardShortcut=\"0\" guid=\"") +
    kRed +
    "\"/>\n"
    "  <category name=\"B\xC3\xBCro\" color=\"7\" keyboardShortcut=\"1\" usageCount=\"4\" "
    "guid=\"" +
    kOffice +
    "\"/>\n"
    "  <category name=\"Privat\" color=\"-1\" keyboardShortcut=\"0\" guid=\"" +
    kPrivate +
    "\"/>\n"
    "</categories>\n";

const std::string kRules =
    "<?xml version=\"1.0\"?>\n"
    "<rules>\n"
    "  <rule name=\"Vom Chef\">\n"
    "    <condition><category>b\xC3\xBCro</category></condition>\n"
    "    <assign><category>Privat</category></assign>\n"
    "  </rule>\n"
    "</rules>\n";

// The Outlook 2007 session of the library over the portable rules
// component in a temporary profile folder.
class XmlRulesComponentTest : public test::SessionFixture {
 protected:
  void SetUp() override {
    ModelTest::SetUp();
    Ports::SetMapi(mapi);
    Ports::SetRegistry(registry);
    Ports::SetRules(std::make_shared<posix::XmlRulesLibrary>(files.Dir()));
  }
  void TearDown() override {
    ModelTest::TearDown();  // ends the session and resets the process-wide values
    Ports::SetRules(nullptr);
    Ports::SetRegistry(nullptr);
    Ports::SetMapi(nullptr);
  }
  void Init() { SessionFixture::Init(u"12.0.4518.1014"); }
  std::string CategoriesPath() const { return files.PathOf("categories.xml"); }
  std::string RulesPath() const { return files.PathOf("rules.xml"); }

  XmlTestFiles files;
  std::shared_ptr<test::FakeMapi> mapi = std::make_shared<test::FakeMapi>();
  std::shared_ptr<test::MemoryRegistry> registry = std::make_shared<test::MemoryRegistry>();
};

TEST_F(XmlRulesComponentTest, ReadChangeAndSaveTheMasterListAndTheRules) {
  XmlTestFiles::Write(CategoriesPath(), kCategories);
  XmlTestFiles::Write(RulesPath(), kRules);
  Init();
  ASSERT_TRUE(app->RulesSupported());
  app->ReadMasterlist();
  EXPECT_EQ(CategoryNames(), (Names{u"", u"Rot", u"B\u00fcro", u"Privat"}));
  EXPECT_EQ(Cat(u"B\u00fcro")->CategoryID(), Utf::FromUtf8(kOffice));
  EXPECT_EQ(Cat(u"B\u00fcro")->Color(), 7);
  EXPECT_EQ(Cat(u"B\u00fcro")->ShortCut(), 1);

  auto added = app->Categories()->Add(u"New", true, u"", 3, 2);
  std::u16string renamed = u"Arbeit";
  Cat(u"B\u00fcro")->SetName(renamed);
  EXPECT_TRUE(ApplicationAccess::CategoryRules(*app)->Changed());
  cats->Delete(ItemIndex::Key(Cat(u"Rot")->ID()));
  app->SaveChanges();

  // The new category got a GUID from the store, and the model knows it.
  const auto list = posix::XmlCategoryStore(CategoriesPath()).List();
  ASSERT_EQ(list.size(), 3u);
  EXPECT_EQ(list[0].name, u"Arbeit");
  EXPECT_EQ(list[0].id, Utf::FromUtf8(kOffice));
  EXPECT_EQ(list[1].name, u"Privat");
  EXPECT_EQ(list[2].name, u"New");
  EXPECT_EQ(list[2].color, 3);
  EXPECT_EQ(list[2].shortCut, 2);
  EXPECT_TRUE(std::regex_match(
      Utf::ToUtf8(list[2].id),
      std::regex(R"(\{[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\})")));
  EXPECT_EQ(added->CategoryID(), list[2].id);

  const std::string text = XmlTestFiles::Read(CategoriesPath());
  EXPECT_EQ(text.find(kRed), std::string::npos) << text;
  EXPECT_NE(text.find("usageCount=\"4\""), std::string::npos) << text;  // kept
  EXPECT_EQ(XmlTestFiles::Read(RulesPath()),
            "<?xml version=\"1.0\"?>\n"
            "<rules>\n"
            "  <rule name=\"Vom Chef\">\n"
            "    <condition><category>Arbeit</category></condition>\n"
            "    <assign><category>Privat</category></assign>\n"
            "  </rule>\n"
            "</rules>\n");
  EXPECT_FALSE(ApplicationAccess::CategoryRules(*app)->Changed());
  EXPECT_EQ(files.Names(), (std::vector<std::string>{"categories.xml", "rules.xml"}));

  // A fresh read gives back what was saved.
  app->ReadMasterlist();
  EXPECT_EQ(CategoryNames(), (Names{u"", u"Arbeit", u"Privat", u"New"}));
  EXPECT_EQ(Cat(u"New")->CategoryID(), list[2].id);
}

TEST_F(XmlRulesComponentTest, EmptyProfileStartsEmptyAndIsCreatedOnSave) {
  Init();
  app->ReadMasterlist();
  EXPECT_EQ(CategoryNames(), (Names{u""}));
  EXPECT_TRUE(files.Names().empty());
  auto added = app->Categories()->Add(u"Erste", true, u"", 0, 0);
  app->SaveChanges();
  EXPECT_EQ(files.Names(), std::vector<std::string>{"categories.xml"});  // no rules to save
  const auto list = posix::XmlCategoryStore(CategoriesPath()).List();
  ASSERT_EQ(list.size(), 1u);
  EXPECT_EQ(list[0].id, added->CategoryID());
}

TEST_F(XmlRulesComponentTest, MalformedListFailsTheReadAndStaysAsItIs) {
  XmlTestFiles::Write(CategoriesPath(), "<categories><category name=\"A\"/>");
  Init();
  try {
    app->ReadMasterlist();
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), cmFileTypeNotSupported);
    EXPECT_NE(e.Source().find(u"Application.ReadMasterlist"), std::u16string::npos);
  }
  EXPECT_EQ(XmlTestFiles::Read(CategoriesPath()), "<categories><category name=\"A\"/>");
}

TEST_F(XmlRulesComponentTest, MalformedRulesFailTheFirstRename) {
  XmlTestFiles::Write(RulesPath(), "<rules>");
  // The rules are read lazily: Initialize succeeds, the first rename fails.
  Init();
  XmlTestFiles::Write(CategoriesPath(), kCategories);
  app->ReadMasterlist();
  std::u16string name = u"Arbeit";
  EXPECT_THROW(Cat(u"B\u00fcro")->SetName(name), Error);
  EXPECT_EQ(Cat(u"B\u00fcro")->Name(), u"B\u00fcro");
}

TEST(XmlRulesLibrary, ProfileFolderComesFromTheEnvironment) {
  test::TempConfigDirs dirs;  // XDG_CONFIG_HOME points at its user folder
  const char* old = getenv("TANDREL4_PROFILE_DIR");
  const std::string saved = old != nullptr ? old : "";
  unsetenv("TANDREL4_PROFILE_DIR");
  EXPECT_EQ(posix::XmlRulesLibrary::DefaultProfileDir().string(),
            dirs.UserDir() + "/Tandrel4/profile");
  setenv("TANDREL4_PROFILE_DIR", "", 1);
  EXPECT_EQ(posix::XmlRulesLibrary::DefaultProfileDir().string(),
            dirs.UserDir() + "/Tandrel4/profile");
  setenv("TANDREL4_PROFILE_DIR", "/somewhere/else", 1);
  EXPECT_EQ(posix::XmlRulesLibrary::DefaultProfileDir().string(), "/somewhere/else");
  EXPECT_EQ(posix::XmlRulesLibrary().ProfileDir().string(), "/somewhere/else");
  if (old != nullptr) {
    setenv("TANDREL4_PROFILE_DIR", saved.c_str(), 1);
  } else {
    unsetenv("TANDREL4_PROFILE_DIR");
  }
}

TEST(XmlRulesLibrary, IsThePlatformsRulesComponent) {
  auto library = CreatePlatformRulesLibrary();
  EXPECT_NE(dynamic_cast<posix::XmlRulesLibrary*>(library.get()), nullptr);
  posix::XmlRulesLibrary explicitFolder("/tmp/none");
  EXPECT_NE(dynamic_cast<posix::XmlRulesStorage*>(explicitFolder.CreateRulesStorage().get()),
            nullptr);
}

TEST(XmlRulesLibrary, NoProfileFolderRaisesPathNotFound) {
  posix::XmlRulesLibrary library{std::filesystem::path()};
  try {
    library.CreateRulesStorage();
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), RunTimeError::kPathNotFound);
  }
}

}  // namespace
}  // namespace t4
