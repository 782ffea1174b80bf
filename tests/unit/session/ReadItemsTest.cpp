#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "MemoryMailbox.h"
#include "ModelFixture.h"
#include "SessionFakes.h"
#include "model/internal/CategoriesAccess.h"
#include "model/internal/OutlookItemAccess.h"
#include "model/internal/OutlookItemsAccess.h"
#include "session/FolderData.h"
#include "session/FolderList.h"
#include "session/internal/ApplicationAccess.h"
#include "support/ErrorObject.h"
#include "support/Ports.h"
#include "support/RunTimeError.h"

namespace t4::test {
namespace {

// Counts the passes over the message queue.
class CountingPump : public IMessagePump {
 public:
  void DoEvents() override { ++runs; }
  int runs = 0;
};

// Records Progress as "value/max"; may run a callback inside the event.
class ProgressLog : public IApplicationEvents {
 public:
  void Progress(int32_t value, int32_t max, bool& cancel) override {
    calls.push_back(std::to_string(value) + "/" + std::to_string(max));
    cancel = true;  // offered, never consulted
    if (inside) inside();
  }
  std::vector<std::string> calls;
  std::function<void()> inside;
};

// A list whose entry `bad` is not a folder record of this library.
class ListWithForeignEntry : public FolderList {
 public:
  using FolderList::FolderList;
  std::shared_ptr<FolderData> Item(int32_t index) override {
    if (index == bad) throw RunTimeError::Make(RunTimeError::kTypeMismatch);
    return FolderList::Item(index);
  }
  int32_t bad = 0;
};

std::string Id(const std::string& kind, int n) {
  // Four flag bytes, then a readable tail, like MAPI's long-term identifiers.
  return std::string(4, '\0') + kind + std::to_string(n);
}

class ReadItemsTest : public ModelTest {
 protected:
  void SetUp() override {
    box = std::make_shared<MemoryMailbox>();
    Ports::SetMapi(box->Library());
    pump = std::make_shared<CountingPump>();
    Ports::SetPump(pump);
    ModelTest::SetUp();
    ReadList({u"Business", u"Private"});
    progress = std::make_shared<ProgressLog>();
    app->Advise(progress);
    store = box->AddStore(Id("S", 1));
  }
  void TearDown() override {
    ModelTest::TearDown();
    Ports::SetMapi(nullptr);
    Ports::SetPump(nullptr);
  }

  // A folder of `store` with one message per keyword list; a null entry
  // makes a message without the Keywords property.
  MemFolder& Folder(int n, std::vector<std::optional<std::vector<std::u16string>>> messages,
                    const std::string& inStore = "") {
    MemFolder& f =
        box->AddFolder(Id("F", n), u"Folder " + Utf::Decimal(n), inStore.empty() ? store : inStore);
    for (auto& keywords : messages) {
      MemMessage m;
      m.entryId = Id("M", n * 1000 + static_cast<int>(f.messages.size()) + 1);
      m.subject = u"Subject " + Utf::Decimal(static_cast<int64_t>(f.messages.size()) + 1);
      m.modified = 45000.25;
      m.messageClass = u"IPM.Note";
      m.keywords = std::move(keywords);
      f.messages.push_back(std::move(m));
    }
    return f;
  }
  MemFolder& Plain(int n, int count, const std::string& inStore = "") {
    std::vector<std::optional<std::vector<std::u16string>>> messages(
        static_cast<size_t>(count), std::vector<std::u16string>{u"Business"});
    return Folder(n, std::move(messages), inStore);
  }
  std::shared_ptr<FolderData> Data(const MemFolder& f, int32_t count = -1) {
    auto d = FolderData::Create();
    d->Init(MemoryMailbox::Hex(f.entryId), MemoryMailbox::Hex(f.storeEntryId), f.name,
            count >= 0 ? count : static_cast<int32_t>(f.messages.size()), false);
    return d;
  }
  std::shared_ptr<FolderList> List(std::vector<std::shared_ptr<FolderData>> entries) {
    return std::make_shared<FolderList>(std::move(entries));
  }
  int CountLog(const std::string& entry) const {
    return static_cast<int>(std::count(box->log.begin(), box->log.end(), entry));
  }
  std::vector<std::string> FoldersOpened() const {
    std::vector<std::string> opened;
    for (const auto& e : box->log) {
      if (e.rfind("GetFolderFromID", 0) == 0) opened.push_back(e);
    }
    return opened;
  }

  std::shared_ptr<MemoryMailbox> box;
  std::shared_ptr<CountingPump> pump;
  std::shared_ptr<ProgressLog> progress;
  std::string store;
};

TEST_F(ReadItemsTest, ReadsEveryRowIntoAnItemWithItsCategories) {
  MemFolder& f = Folder(1, {std::vector<std::u16string>{u"Business", u"Neu"}, std::nullopt,
                            std::vector<std::u16string>{u"Private"}});
  f.messages[1].messageClass = u"IPM.Contact";
  app->ReadItems(List({Data(f)}));

  ASSERT_EQ(items->Count(), 3);
  auto first = items->Item(ItemIndex::Position(1));
  EXPECT_EQ(first->ID(), 1);
  EXPECT_EQ(first->EntryID(), MemoryMailbox::Hex(f.messages[0].entryId));
  EXPECT_EQ(first->EntryID(), u"000000004D31303031");
  EXPECT_EQ(first->StoreID(), MemoryMailbox::Hex(store));
  EXPECT_EQ(first->Subject(), u"Subject 1");
  EXPECT_EQ(first->Folder(), u"Folder 1");
  EXPECT_DOUBLE_EQ(first->DateTime(), 45000.25);
  EXPECT_EQ(first->CategoriesString(), u"Business;Neu");
  EXPECT_FALSE(first->Changed());
  EXPECT_EQ(items->Item(ItemIndex::Position(2))->MessageClass(), u"ipm.contact");
  EXPECT_EQ(items->Item(ItemIndex::Position(2))->ItemType(), 2);
  EXPECT_EQ(MemberIds(*cats->DefaultCategory(true)), std::vector<int32_t>({2}));
  EXPECT_EQ(MemberIds(*Cat(u"Business")), std::vector<int32_t>({1}));
  EXPECT_EQ(MemberIds(*Cat(u"Private")), std::vector<int32_t>({3}));
  // A keyword missing from the master list becomes a category outside it.
  ASSERT_TRUE(Cat(u"Neu"));
  EXPECT_FALSE(Cat(u"Neu")->InMasterlist());
  EXPECT_FALSE(app->Changed());
  EXPECT_FALSE(app->UndoIsPossible());
  EXPECT_EQ(progress->calls, std::vector<std::string>({"1/3", "2/3", "3/3"}));
  EXPECT_EQ(pump->runs, 3);
  EXPECT_EQ(ApplicationAccess::ItemsCounter(*app), 3);
}

TEST_F(ReadItemsTest, NoEventsAndNoJournalWhileReading) {
  Plain(1, 2);
  app->ReadItems(List({Data(box->folders.at(Id("F", 1)))}));
  EXPECT_TRUE(log->events.empty());
  EXPECT_FALSE(app->UndoIsPossible());
}

TEST_F(ReadItemsTest, AskedForTheExactColumnsAndReleasesTheTable) {
  Plain(1, 2);
  app->ReadItems(List({Data(box->folders.at(Id("F", 1)))}));
  EXPECT_EQ(CountLog("Table.Columns 0FFF0102,0037001E,30080040,001A001E,80AA101E"), 1);
  EXPECT_EQ(CountLog("GetIDsFromNames Keywords"), 1);
  // The table lets go of the raw table before it is dropped.
  auto empty = std::find(box->log.begin(), box->log.end(), "Table.Item empty");
  auto dropped = std::find(box->log.begin(), box->log.end(), "Table dropped");
  ASSERT_NE(empty, box->log.end());
  ASSERT_NE(dropped, box->log.end());
  EXPECT_LT(empty, dropped);
  EXPECT_EQ(CountLog("Table dropped holding its item"), 0);
  EXPECT_EQ(CountLog("CreateUtils sfUtils"), 1);
}

TEST_F(ReadItemsTest, NullOrEmptyListStillResetsItemsMembershipsAndJournal) {
  for (bool null : {true, false}) {
    SCOPED_TRACE(null ? "null list" : "empty list");
    auto item = ReadItem({u"Business"});
    cats->Add(null ? u"Neu 1" : u"Neu 2", true);
    ASSERT_TRUE(app->UndoIsPossible());
    app->ReadItems(null ? nullptr : List({}));
    EXPECT_EQ(items->Count(), 0);
    EXPECT_TRUE(MemberIds(*Cat(u"Business")).empty());
    EXPECT_FALSE(app->UndoIsPossible());
    EXPECT_FALSE(app->Changed());
    EXPECT_FALSE(OutlookItemsAccess::IsReading(*items));
    EXPECT_FALSE(CategoriesAccess::IsReading(*cats));
    EXPECT_FALSE(CategoriesAccess::Importing(*cats));
    EXPECT_EQ(box->Count("GetFolderFromID"), 0);
  }
  EXPECT_EQ(box->Count("Logon"), 1);
}

TEST_F(ReadItemsTest, WithoutAMasterListTheDefaultCategoryComesFirst) {
  CategoriesAccess::Clear(*cats);
  MemFolder& f = Folder(1, {std::vector<std::u16string>{u"Work"}, std::nullopt});
  app->ReadItems(List({Data(f)}));
  auto def = cats->DefaultCategory(true);
  ASSERT_TRUE(def);
  EXPECT_EQ(def->ID(), 0);
  EXPECT_EQ(def->Name(), u"");
  EXPECT_FALSE(def->InMasterlist());
  EXPECT_EQ(MemberIds(*def), std::vector<int32_t>({2}));
  EXPECT_EQ(MemberIds(*Cat(u"Work")), std::vector<int32_t>({1}));
  EXPECT_FALSE(app->Changed());
  EXPECT_TRUE(log->events.empty());
}

TEST_F(ReadItemsTest, FirstItemHasIdOneAndItemZeroIsNothing) {
  Plain(1, 2);
  app->ReadItems(List({Data(box->folders.at(Id("F", 1)))}));
  EXPECT_EQ(items->Item(ItemIndex::Position(0)), nullptr);
  EXPECT_EQ(items->Item(ItemIndex::Key(u"0")), nullptr);
  EXPECT_EQ(items->Item(ItemIndex::Key(u"1"))->ID(), 1);
}

TEST_F(ReadItemsTest, FolderListedWithoutItemsIsNeverOpened) {
  MemFolder& f = Plain(1, 3);
  app->ReadItems(List({Data(f, 0)}));
  EXPECT_EQ(box->Count("GetFolderFromID"), 0);
  EXPECT_EQ(items->Count(), 0);
}

TEST_F(ReadItemsTest, FolderDataWithoutInitIsSkipped) {
  MemFolder& f = Plain(1, 1);
  app->ReadItems(List({FolderData::Create(), nullptr, Data(f)}));
  EXPECT_EQ(FoldersOpened().size(), 1u);
  EXPECT_EQ(items->Count(), 1);
}

TEST_F(ReadItemsTest, EmptyItemsCollectionGivesNoTableAndNoProgress) {
  MemFolder& f = Plain(1, 0);
  app->ReadItems(List({Data(f, 5)}));
  EXPECT_EQ(box->Count("GetFolderFromID"), 1);
  EXPECT_EQ(box->Count("CreateTable"), 0);
  EXPECT_EQ(box->Count("GetStoreFromID"), 0);
  EXPECT_TRUE(progress->calls.empty());
}

TEST_F(ReadItemsTest, StoreWithoutKeywordsPutsEveryItemIntoTheDefaultCategory) {
  const std::string plainStore = box->AddStore(Id("S", 2), false);
  MemFolder& f = Plain(1, 3, plainStore);
  app->ReadItems(List({Data(f)}));
  EXPECT_EQ(CountLog("Table.Columns 0FFF0102,0037001E,30080040,001A001E"), 1);
  EXPECT_EQ(MemberIds(*cats->DefaultCategory(true)), std::vector<int32_t>({1, 2, 3}));
  EXPECT_TRUE(MemberIds(*Cat(u"Business")).empty());
}

TEST_F(ReadItemsTest, OnlyEmptyKeywordsLeaveTheItemWithoutAnyCategory) {
  MemFolder& f = Folder(1, {std::vector<std::u16string>{u"", u""}, std::vector<std::u16string>{}});
  app->ReadItems(List({Data(f)}));
  for (int64_t i : {1, 2}) {
    SCOPED_TRACE(i);
    EXPECT_EQ(items->Item(ItemIndex::Position(i))->CategoriesCount(), 0);
  }
  EXPECT_TRUE(MemberIds(*cats->DefaultCategory(true)).empty());
}

TEST_F(ReadItemsTest, KeywordsAreTrimmedOfBlanksAndShareOneCategory) {
  MemFolder& f = Folder(
      1, {std::vector<std::u16string>{u"  Reise 2024 "}, std::vector<std::u16string>{u"Reise 2024"},
          std::vector<std::u16string>{u"\tReise 2024"}});
  const int32_t before = cats->Count(true);
  app->ReadItems(List({Data(f)}));
  ASSERT_TRUE(Cat(u"Reise 2024"));
  EXPECT_EQ(MemberIds(*Cat(u"Reise 2024")), std::vector<int32_t>({1, 2}));
  // Only blanks are trimmed: a tab makes another name.
  EXPECT_TRUE(Cat(u"\tReise 2024"));
  EXPECT_EQ(cats->Count(true), before + 2);
}

TEST_F(ReadItemsTest, KeywordsMatchMasterListNamesInAnyLetterCase) {
  MemFolder& f = Folder(1, {std::vector<std::u16string>{u"BUSINESS", u"business"}});
  app->ReadItems(List({Data(f)}));
  EXPECT_EQ(items->Item(ItemIndex::Position(1))->CategoriesString(), u"Business");
  EXPECT_EQ(MemberIds(*Cat(u"Business")), std::vector<int32_t>({1}));
}

TEST_F(ReadItemsTest, FoldersAreReadInChunksAndTheLastRemainderStays) {
  std::vector<std::shared_ptr<FolderData>> list;
  for (int n = 1; n <= 25; ++n) list.push_back(Data(Plain(n, 1)));
  ApplicationAccess::SetChunkSize(*app, 10);
  app->ReadItems(List(list));
  const auto opened = FoldersOpened();
  ASSERT_EQ(opened.size(), 25u);
  for (int n = 1; n <= 25; ++n) {
    SCOPED_TRACE(n);
    EXPECT_EQ(items->Item(ItemIndex::Position(n))->Folder(), u"Folder " + Utf::Decimal(n));
  }
  EXPECT_EQ(ApplicationAccess::ChunkSize(*app), 5);
}

TEST_F(ReadItemsTest, ChunkSizeTable) {
  struct Case {
    int folders;
    int chunk;
    int after;
  } cases[] = {{25, 10, 5}, {20, 10, 10}, {10, 10, 10}, {5, 10, 10}, {7, 0, 0},
               {7, -3, -3}, {21, 10, 1},  {3, 1, 1},    {0, 4, 4}};
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.folders) + " folders, chunk " + std::to_string(c.chunk));
    box->folders.clear();
    box->log.clear();
    std::vector<std::shared_ptr<FolderData>> list;
    for (int n = 1; n <= c.folders; ++n) list.push_back(Data(Plain(n, 1)));
    ApplicationAccess::SetChunkSize(*app, c.chunk);
    app->ReadItems(List(list));
    EXPECT_EQ(static_cast<int>(FoldersOpened().size()), c.folders);
    EXPECT_EQ(items->Count(), c.folders);
    EXPECT_EQ(ApplicationAccess::ChunkSize(*app), c.after);
  }
}

TEST_F(ReadItemsTest, RowsAreFetchedThirtyAtATime) {
  struct Case {
    int rows;
    std::vector<std::string> fetches;
  } cases[] = {{1, {"Table.GetRows 1"}},
               {30, {"Table.GetRows 30"}},
               {31, {"Table.GetRows 30", "Table.GetRows 1"}},
               {61, {"Table.GetRows 30", "Table.GetRows 30", "Table.GetRows 1"}},
               {75, {"Table.GetRows 30", "Table.GetRows 30", "Table.GetRows 15"}}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.rows);
    box->folders.clear();
    box->log.clear();
    progress->calls.clear();
    app->ReadItems(List({Data(Plain(1, c.rows))}));
    std::vector<std::string> fetches;
    for (const auto& e : box->log) {
      if (e.rfind("Table.GetRows", 0) == 0) fetches.push_back(e);
    }
    EXPECT_EQ(fetches, c.fetches);
    EXPECT_EQ(items->Count(), c.rows);
    ASSERT_EQ(static_cast<int>(progress->calls.size()), c.rows);
    EXPECT_EQ(progress->calls.back(), std::to_string(c.rows) + "/" + std::to_string(c.rows));
  }
}

TEST_F(ReadItemsTest, FailedFetchKeepsTheRowsGatheredSoFar) {
  MemFolder& f = Plain(1, 75);
  box->failAt["Table.GetRows"] = 2;
  app->ReadItems(List({Data(f)}));
  EXPECT_EQ(items->Count(), 30);
  EXPECT_EQ(progress->calls.back(), "30/30");
}

TEST_F(ReadItemsTest, ProgressRestartsForEveryFolder) {
  app->ReadItems(List({Data(Plain(1, 2)), Data(Plain(2, 3))}));
  EXPECT_EQ(progress->calls, std::vector<std::string>({"1/2", "2/2", "1/3", "2/3", "3/3"}));
}

TEST_F(ReadItemsTest, SubscriberMayCallBackIntoTheLibrary) {
  std::vector<int32_t> seen;
  progress->inside = [&] {
    seen.push_back(app->OutlookItems()->Count());
    cats->Add(u"Inside", true);
  };
  app->ReadItems(List({Data(Plain(1, 3))}));
  EXPECT_EQ(seen, std::vector<int32_t>({1, 2, 3}));
  EXPECT_EQ(items->Count(), 3);
}

TEST_F(ReadItemsTest, CategoryRenamedBySubscriberIsNotFoundByItsOldName) {
  bool renamed = false;
  progress->inside = [&] {
    if (!renamed) Cat(u"Business")->SetName(u"Geschäft");
    renamed = true;
  };
  app->ReadItems(List({Data(Plain(1, 3))}));
  EXPECT_EQ(MemberIds(*Cat(u"Geschäft")), std::vector<int32_t>({1}));
  ASSERT_TRUE(Cat(u"Business"));
  EXPECT_FALSE(Cat(u"Business")->InMasterlist());
  EXPECT_EQ(MemberIds(*Cat(u"Business")), std::vector<int32_t>({2, 3}));
}

TEST_F(ReadItemsTest, SubscriberMayTerminateTheApplication) {
  progress->inside = [&] { app->Terminate(); };
  app->ReadItems(List({Data(Plain(1, 3))}));
  // The read finishes on the collections it holds.
  EXPECT_EQ(items->Count(), 3);
  EXPECT_EQ(app->OutlookItems(), nullptr);
}

TEST_F(ReadItemsTest, StoresAreRegisteredOncePerStore) {
  const std::string other = box->AddStore(Id("S", 2));
  app->ReadItems(List({Data(Plain(1, 1)), Data(Plain(2, 1)), Data(Plain(3, 1, other))}));
  ASSERT_TRUE(ApplicationAccess::Stores(*app));
  EXPECT_EQ(ApplicationAccess::Stores(*app)->Count(), 2);
  // Keys ignore the letter case of the hexadecimal text.
  std::u16string lower = MemoryMailbox::Hex(other);
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](char16_t c) { return c >= u'A' && c <= u'F' ? c + 32 : c; });
  EXPECT_TRUE(ApplicationAccess::Stores(*app)->Item(lower));
}

// Folder validation ---------------------------------------------------------

class JunkFolderTest : public ReadItemsTest {
 protected:
  void SetUp() override {
    ReadItemsTest::SetUp();
    inbox = &Plain(1, 2);
    junk = &Plain(2, 3);
    MemStore& s = box->stores.at(store);
    s.inboxEntryId = inbox->entryId;
    s.rootEntryId = inbox->entryId;
    // The junk folder's identifier with other flag bytes: MAPI, not the
    // text, decides that it names the same folder.
    std::string junkId = junk->entryId;
    junkId[0] = '\x01';
    s.additionalRenEntryIds =
        std::vector<std::string>{Id("X", 0), Id("X", 1), Id("X", 2), Id("X", 3), junkId};
  }
  MemFolder* inbox = nullptr;
  MemFolder* junk = nullptr;
};

TEST_F(JunkFolderTest, JunkFolderIsOpenedButNothingIsRead) {
  app->ReadItems(List({Data(*junk), Data(*inbox)}));
  EXPECT_EQ(items->Count(), 2);
  EXPECT_EQ(items->Item(ItemIndex::Position(1))->Folder(), u"Folder 1");
  EXPECT_EQ(progress->calls, std::vector<std::string>({"1/2", "2/2"}));
  EXPECT_EQ(box->Count("CreateTable"), 1);
  // Opened once through the list, once to build the exclusion list.
  EXPECT_EQ(FoldersOpened().size(), 3u);
  EXPECT_EQ(CountLog("CreateUtils sfutils"), 1);
}

TEST_F(JunkFolderTest, PropertyOnTheRootFolderWorksToo) {
  box->stores.at(store).propOnRootOnly = true;
  box->stores.at(store).inboxEntryId.clear();
  box->stores.at(store).rootEntryId = Id("F", 9);
  box->AddFolder(Id("F", 9), u"Root", store);
  app->ReadItems(List({Data(*junk), Data(*inbox)}));
  EXPECT_EQ(items->Count(), 2);
}

TEST_F(JunkFolderTest, StoreWithoutTheListExcludesNothing) {
  box->stores.at(store).additionalRenEntryIds.reset();
  app->ReadItems(List({Data(*junk), Data(*inbox)}));
  EXPECT_EQ(items->Count(), 5);
}

TEST_F(JunkFolderTest, ShortListExcludesNothing) {
  box->stores.at(store).additionalRenEntryIds->resize(4);
  app->ReadItems(List({Data(*junk)}));
  EXPECT_EQ(items->Count(), 3);
}

TEST_F(JunkFolderTest, ListIsRebuiltAtEveryChangeOfStore) {
  const std::string other = box->AddStore(Id("S", 2));
  MemFolder& a = Plain(3, 1, other);
  app->ReadItems(List({Data(*inbox), Data(*junk), Data(a), Data(*inbox), Data(a), Data(a)}));
  // Store 1, store 2, store 1, store 2: four lists; the junk folder once
  // more refused.
  EXPECT_EQ(CountLog("CreateUtils sfutils"), 4);
  EXPECT_EQ(items->Count(), 2 + 1 + 2 + 1 + 1);
}

TEST(FolderValidation, SameFolderIsFalseForMissingFoldersOrFailedComparison) {
  auto box = std::make_shared<MemoryMailbox>();
  auto lib = box->Library();
  auto session = lib->CreateSession();
  box->AddStore(Id("S", 1));
  box->AddFolder(Id("F", 1), u"A", Id("S", 1));
  auto folder = session->GetFolderFromID(MemoryMailbox::Hex(Id("F", 1)), u"");
  EXPECT_TRUE(FolderValidation::IsSameFolder(session.get(), folder.get(), folder.get()));
  EXPECT_FALSE(FolderValidation::IsSameFolder(session.get(), folder.get(), nullptr));
  EXPECT_FALSE(FolderValidation::IsSameFolder(session.get(), nullptr, folder.get()));
  box->failAt["CompareEntryIDs"] = box->Count("CompareEntryIDs") + 1;
  EXPECT_FALSE(FolderValidation::IsSameFolder(session.get(), folder.get(), folder.get()));
}

// Failures ------------------------------------------------------------------

TEST_F(ReadItemsTest, FaultAtEveryCallLeavesFlagsOffAndNothingChanged) {
  struct Case {
    const char* member;
    int at;
    int itemsRead;  // -1: the error reaches the host
  } cases[] = {{"Logon", 1, -1},          {"GetFolderFromID", 1, -1}, {"GetFolderFromID", 2, -1},
               {"Folder.Items", 2, -1},   {"Items.Count", 1, -1},     {"CreateTable", 2, -1},
               {"Table.Item", 1, -1},     {"Table.Columns", 2, -1},   {"Table.GoToFirst", 1, -1},
               {"GetStoreFromID", 2, -1}, {"Folder.Name", 1, -1},     {"GetIDsFromNames", 1, 4},
               {"Table.RowCount", 2, 2},  {"Table.GetRows", 1, 2}};
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.member) + " #" + std::to_string(c.at));
    TearDown();
    SetUp();
    Plain(1, 2);
    Plain(2, 2);
    box->failAt[c.member] = c.at;
    auto list = List({Data(box->folders.at(Id("F", 1))), Data(box->folders.at(Id("F", 2)))});
    auto item = ReadItem({u"Private"});
    item->CategoriesAdd(Cat(u"Business"));
    ASSERT_TRUE(app->Changed());
    if (c.itemsRead < 0) {
      try {
        app->ReadItems(list);
        ADD_FAILURE() << "no error";
      } catch (const Error& e) {
        EXPECT_NE(e.Source().find(u"Tandrel4.Application.ReadItems (0)"), std::u16string::npos);
      }
    } else {
      EXPECT_NO_THROW(app->ReadItems(list));
      EXPECT_EQ(items->Count(), c.itemsRead);
    }
    EXPECT_FALSE(app->Changed());
    EXPECT_FALSE(OutlookItemsAccess::IsReading(*items));
    EXPECT_FALSE(CategoriesAccess::IsReading(*cats));
    EXPECT_FALSE(CategoriesAccess::Importing(*cats));
    // A failed logon comes before the journal is cleared.
    EXPECT_EQ(app->UndoIsPossible(), std::string(c.member) == "Logon");
    EXPECT_EQ(CountLog("Table dropped holding its item"), 0);
  }
}

TEST_F(ReadItemsTest, ErrorInAFolderCarriesEveryProcedureLabel) {
  Plain(1, 2);
  box->failAt["GetStoreFromID"] = 1;
  try {
    app->ReadItems(List({Data(box->folders.at(Id("F", 1)))}));
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), MemoryMailbox::kInjected);
    EXPECT_EQ(e.Description(), u"injected fault");
    EXPECT_NE(e.Source().find(u"Tandrel4.Application.ReadItemsEx (0); "
                              u"Tandrel4.Application.LoopFoldersEx (0); "
                              u"Tandrel4.Application.LoopFolders (0); "
                              u"Tandrel4.Application.ReadItems (0)"),
              std::u16string::npos)
        << Utf::ToUtf8(e.Source());
  }
}

TEST_F(ReadItemsTest, ErrorBuildingTheTableCarriesItsLabel) {
  Plain(1, 2);
  box->failAt["Table.Columns"] = 1;
  try {
    app->ReadItems(List({Data(box->folders.at(Id("F", 1)))}));
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_NE(e.Source().find(u"Tandrel4.Application.GetMapiTable (0); "
                              u"Tandrel4.Application.ReadItemsEx (0)"),
              std::u16string::npos)
        << Utf::ToUtf8(e.Source());
  }
}

TEST_F(ReadItemsTest, EntryThatIsNoFolderRecordFailsWithTypeMismatch) {
  auto list = std::make_shared<ListWithForeignEntry>(
      std::vector<std::shared_ptr<FolderData>>{Data(Plain(1, 1)), nullptr, Data(Plain(2, 1))});
  list->bad = 2;
  try {
    app->ReadItems(list);
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), 13);
    EXPECT_NE(e.Source().find(u"Tandrel4.Application.LoopFoldersEx (0)"), std::u16string::npos);
  }
  // Folders before the bad entry were read; the state is that of a read.
  EXPECT_EQ(items->Count(), 1);
  EXPECT_FALSE(app->Changed());
}

// Items: saving and opening --------------------------------------------------

class ItemSaveTest : public ReadItemsTest {
 protected:
  void SetUp() override {
    ReadItemsTest::SetUp();
    Ports::SetRegistry(std::make_shared<MemoryRegistry>());
    app->Initialize(std::make_shared<FakeOutlook>(u"11.0"));
    folder = &Folder(1, {std::vector<std::u16string>{u"Business"}, std::nullopt,
                         std::vector<std::u16string>{u"Private", u"Business"}});
    app->ReadItems(List({Data(*folder)}));
  }
  void TearDown() override {
    ReadItemsTest::TearDown();
    Ports::SetRegistry(nullptr);
  }
  std::shared_ptr<OutlookItem> At(int64_t i) { return items->Item(ItemIndex::Position(i)); }
  MemMessage& Message(int i) { return folder->messages[static_cast<size_t>(i - 1)]; }
  MemFolder* folder = nullptr;
};

TEST_F(ItemSaveTest, SaveWritesTheNamesJoinedBySemicolons) {
  At(2)->CategoriesAdd(Cat(u"Private"));
  At(2)->CategoriesAdd(Cat(u"Business"));
  Cat(u"Business")->SetName(u"Geschäft");
  app->SaveChanges();
  EXPECT_EQ(Message(2).savedCategories, u"Private;Geschäft");
  EXPECT_EQ(Message(2).saves, 1);
  // The rename changed the text of every item that carries the category.
  EXPECT_EQ(Message(1).savedCategories, u"Geschäft");
  EXPECT_EQ(Message(3).savedCategories, u"Private;Geschäft");
  EXPECT_FALSE(At(2)->Changed());
  EXPECT_FALSE(items->Changed());
}

TEST_F(ItemSaveTest, SaveWithoutCategoriesWritesEmptyText) {
  At(1)->CategoriesRemove(ItemIndex::Position(1));
  OutlookItemAccess::Save(*At(1), *cats);
  EXPECT_EQ(Message(1).saves, 1);
  EXPECT_EQ(Message(1).savedCategories, u"");
  EXPECT_EQ(CountLog("SetCategories"), 1);
}

TEST_F(ItemSaveTest, UndoIsStillPossibleAfterSaving) {
  At(2)->MoveToCategory(Cat(u"Private"));
  app->SaveChanges();
  EXPECT_TRUE(app->UndoIsPossible());
  app->Undo();
  EXPECT_TRUE(At(2)->Changed());
  app->SaveChanges();
  EXPECT_EQ(Message(2).savedCategories, u"");
  EXPECT_EQ(Message(2).saves, 2);
}

TEST_F(ItemSaveTest, VanishedMessageFailsWithItemNotFound) {
  At(1)->CategoriesAdd(Cat(u"Private"));
  Message(1).deleted = true;
  try {
    OutlookItemAccess::Save(*At(1), *cats);
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), cmItemNotFound);
    EXPECT_EQ(e.Description(), u"Das Outlook-Element wurde nicht gefunden.");
    EXPECT_NE(e.Source().find(u"Tandrel4.OutlookItem.GetRedemptionItem (0); "
                              u"Tandrel4.OutlookItem.Save (0)"),
              std::u16string::npos);
  }
  EXPECT_TRUE(At(1)->Changed());
  EXPECT_EQ(Message(1).saves, 0);
}

TEST_F(ItemSaveTest, FailedSaveKeepsWhatWasWrittenAndTheRestChanged) {
  auto added = cats->Add(u"Neu", true);
  for (int64_t i : {1, 2, 3}) At(i)->CategoriesAdd(added);
  box->failAt["Save"] = box->Count("Save") + 2;
  EXPECT_THROW(app->SaveChanges(), Error);
  EXPECT_EQ(Message(1).saves, 1);
  EXPECT_EQ(Message(2).saves, 0);
  EXPECT_EQ(Message(3).saves, 0);
  EXPECT_FALSE(At(1)->Changed());
  EXPECT_TRUE(At(2)->Changed());
  EXPECT_TRUE(At(3)->Changed());
  EXPECT_TRUE(items->Changed());
  // The next save writes the rest.
  app->SaveChanges();
  EXPECT_EQ(Message(1).saves, 1);
  EXPECT_EQ(Message(2).saves, 1);
  EXPECT_EQ(Message(3).saves, 1);
  EXPECT_FALSE(items->Changed());
}

TEST_F(ItemSaveTest, FaultAtEveryItemCallLeavesTheItemChanged) {
  for (const char* member : {"GetMessageFromID", "SetCategories", "Save"}) {
    SCOPED_TRACE(member);
    At(2)->CategoriesAdd(Cat(u"Private"));
    box->failAt[member] = box->Count(member) + 1;
    EXPECT_THROW(app->SaveChanges(), Error);
    EXPECT_TRUE(At(2)->Changed());
    EXPECT_TRUE(items->Changed());
    box->failAt.clear();
    app->SaveChanges();
    EXPECT_FALSE(At(2)->Changed());
    At(2)->CategoriesRemove(ItemIndex::Position(1));
    app->SaveChanges();
  }
}

TEST_F(ItemSaveTest, ItemOfAnEarlierReadingIsNotFound) {
  auto old = At(1);
  app->ReadItems(List({Data(*folder)}));
  EXPECT_THROW(OutlookItemAccess::GetRedemptionItem(*old), Error);
  EXPECT_TRUE(OutlookItemAccess::GetRedemptionItem(*At(1)));
}

class FakeItem : public IClientObject {};

TEST_F(ItemSaveTest, GetOutlookItemTriesWithoutThenWithTheStore) {
  auto outlook = std::make_shared<FakeOutlook>(u"11.0");
  app->Initialize(outlook);
  const std::u16string entry = At(1)->EntryID();
  const std::u16string storeId = At(1)->StoreID();
  auto found = std::make_shared<FakeItem>();
  outlook->items[entry + u"|" + storeId] = found;
  EXPECT_EQ(At(1)->GetOutlookItem(), found);
  EXPECT_EQ(outlook->lookups, std::vector<std::u16string>({entry + u"|", entry + u"|" + storeId}));
  outlook->items[entry + u"|"] = found;
  outlook->lookups.clear();
  EXPECT_EQ(At(1)->GetOutlookItem(), found);
  EXPECT_EQ(outlook->lookups.size(), 1u);
}

TEST_F(ItemSaveTest, GetOutlookItemFailsWithItemNotFound) {
  app->Initialize(std::make_shared<FakeOutlook>(u"11.0"));
  try {
    At(1)->GetOutlookItem();
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), cmItemNotFound);
    EXPECT_EQ(e.Description(), u"Das Outlook-Element wurde nicht gefunden.");
    EXPECT_NE(e.Source().find(u"Tandrel4.OutlookItem.GetOutlookItem (0)"), std::u16string::npos);
  }
}

}  // namespace
}  // namespace t4::test
