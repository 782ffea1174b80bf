// The library's whole job natively: a generated mail profile read through
// the Application, categories edited, items saved into the message files,
// and read again.
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "ModelReading.h"
#include "ProfileGenerator.h"
#include "model/Categories.h"
#include "model/Category.h"
#include "model/OutlookItem.h"
#include "model/OutlookItems.h"
#include "model/internal/CategoriesAccess.h"
#include "platform/posix/MaildirFolder.h"
#include "platform/posix/MaildirMessage.h"
#include "platform/posix/MaildirSession.h"
#include "platform/posix/MaildirStore.h"
#include "platform/posix/ProfileClientApp.h"
#include "platform/posix/ProfileClientItem.h"
#include "platform/posix/TestProfile.h"
#include "session/Application.h"
#include "session/FolderList.h"
#include "support/ErrorObject.h"
#include "support/Ports.h"
#include "support/ProcessValues.h"
#include "support/Utf.h"

namespace t4 {
namespace {

class CountingProgress : public IApplicationEvents {
 public:
  void Progress(int32_t value, int32_t max, bool&) override {
    ++calls;
    if (value == max) folders.push_back(max);
  }
  int calls = 0;
  std::vector<int32_t> folders;  // rows of each folder read
};

class ProfileItemsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ProcessValues::Reset();
    // The default ports of this platform, over the test's profile.
    Ports::SetMapi(nullptr);
    Ports::SetRegistry(nullptr);
    Ports::SetRules(nullptr);
    tools::ProfileGenerator::Options options;
    options.stores = 2;
    options.folders = 3;
    options.messages = 120;
    profile = std::make_unique<test::TestProfile>(options);
    app = Open();
  }
  void TearDown() override {
    if (app) app->Terminate();
    Ports::SetMapi(nullptr);
    Ports::SetRegistry(nullptr);
    Ports::SetRules(nullptr);
    ProcessValues::Reset();
  }

  std::shared_ptr<Application> Open() {
    auto a = Application::Create();
    a->Initialize(std::make_shared<posix::ProfileClientApp>(profile->Dir()));
    a->ReadMasterlist();
    return a;
  }

  // Every folder of every store, as a host lists them for ReadItems.
  std::shared_ptr<FolderList> AllFolders(int* junkItems = nullptr) {
    auto list = std::make_shared<FolderList>();
    auto session = std::make_shared<posix::MaildirSession>(profile->Dir());
    session->Logon();
    for (const auto& store : session->Stores()) {
      for (const auto& name : store->FolderNames()) {
        auto folder = store->OpenFolder(name);
        auto data = FolderData::Create();
        const int32_t count = folder->Items()->Count();
        data->Init(folder->EntryID(), store->EntryID(), folder->Name(), count, false);
        list->Add(data);
        if (junkItems && !store->JunkFolder().empty() && name == store->JunkFolder()) {
          *junkItems += count;
        }
        total += count;
      }
    }
    return list;
  }

  std::shared_ptr<Category> Cat(const std::u16string& name) {
    std::shared_ptr<Category> found;
    return app->Categories()->NameExist(name, found) ? found : nullptr;
  }

  std::unique_ptr<test::TestProfile> profile;
  std::shared_ptr<Application> app;
  int total = 0;
};

TEST_F(ProfileItemsTest, ReadsEveryMessageButTheJunkFolders) {
  int junk = 0;
  auto list = AllFolders(&junk);
  ASSERT_GT(junk, 0);
  auto progress = std::make_shared<CountingProgress>();
  app->Advise(progress);
  app->ReadItems(list);
  auto items = app->OutlookItems();
  EXPECT_EQ(items->Count(), total - junk);
  EXPECT_EQ(progress->calls, total - junk);
  EXPECT_FALSE(app->Changed());
  // Every item is in its categories or in the default one.
  int32_t members = 0;
  CategoriesAccess::All(*app->Categories())
      .ForEach(
          [&](int32_t, const std::shared_ptr<Category>& c) { members += c->MemberCount(true); });
  int32_t assignments = 0;
  for (const auto& item : items->Enumerate()) {
    assignments += item->CategoriesCount() == 0 ? 1 : item->CategoriesCount();
  }
  EXPECT_EQ(members, assignments);
  // The name used on messages but missing from the master list.
  auto unlisted = Cat(Utf::FromUtf8(tools::ProfileGenerator::UnlistedCategory()));
  ASSERT_TRUE(unlisted);
  EXPECT_FALSE(unlisted->InMasterlist());
  EXPECT_GT(unlisted->MemberCount(true), 0);
  // Message classes from the headers.
  std::set<int32_t> types;
  for (const auto& item : items->Enumerate()) types.insert(item->ItemType());
  EXPECT_GE(types.size(), 3u);
}

TEST_F(ProfileItemsTest, SavedCategoriesReachTheMessageFilesAndReadBack) {
  app->ReadItems(AllFolders());
  auto items = app->OutlookItems();
  ASSERT_GT(items->Count(), 10);
  auto target = app->Categories()->Add(u"Größe Reise", true);
  std::map<std::u16string, std::u16string> expected;  // entry id -> categories
  for (int32_t i = 1; i <= items->Count(); i += 3) {
    auto item = items->Item(ItemIndex::Position(i));
    item->MoveToCategory(target);
    expected[item->EntryID()] = item->CategoriesString();
  }
  auto second = items->Item(ItemIndex::Position(2));
  second->CategoriesAdd(target);
  expected[second->EntryID()] = second->CategoriesString();
  app->SaveChanges();
  EXPECT_FALSE(app->Changed());

  auto again = Open();
  again->ReadItems(AllFolders());
  int found = 0;
  for (const auto& item : again->OutlookItems()->Enumerate()) {
    auto it = expected.find(item->EntryID());
    if (it == expected.end()) continue;
    ++found;
    EXPECT_EQ(item->CategoriesString(), it->second) << Utf::ToUtf8(item->Subject());
  }
  EXPECT_EQ(found, static_cast<int>(expected.size()));
  again->Terminate();
}

TEST_F(ProfileItemsTest, VanishedMessageFailsItsSaveAndTheRestStaysChanged) {
  app->ReadItems(AllFolders());
  auto items = app->OutlookItems();
  auto target = app->Categories()->Add(u"Neu", true);
  auto first = items->Item(ItemIndex::Position(1));
  auto third = items->Item(ItemIndex::Position(3));
  first->CategoriesAdd(target);
  third->CategoriesAdd(target);
  // The first message goes away behind the library's back.
  auto client = std::dynamic_pointer_cast<posix::ProfileClientItem>(first->GetOutlookItem());
  ASSERT_TRUE(client);
  ASSERT_TRUE(std::filesystem::remove(client->Message()->CurrentPath()));
  const std::string thirdBefore = test::TestProfile::Read(
      std::dynamic_pointer_cast<posix::ProfileClientItem>(third->GetOutlookItem())
          ->Message()
          ->CurrentPath());
  try {
    app->SaveChanges();
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), cmItemNotFound);
  }
  // The save stopped at the vanished message: the later one is untouched.
  EXPECT_TRUE(first->Changed());
  EXPECT_TRUE(third->Changed());
  EXPECT_TRUE(app->OutlookItems()->Changed());
  EXPECT_EQ(test::TestProfile::Read(
                std::dynamic_pointer_cast<posix::ProfileClientItem>(third->GetOutlookItem())
                    ->Message()
                    ->CurrentPath()),
            thirdBefore);
}

}  // namespace
}  // namespace t4
