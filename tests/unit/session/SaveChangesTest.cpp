#include <gtest/gtest.h>

#include "SessionFixture.h"
#include "model/internal/CategoriesAccess.h"
#include "model/internal/OutlookItemAccess.h"
#include "rules/Masterlist07.h"
#include "session/internal/ApplicationAccess.h"
#include "support/ClientVersion.h"
#include "support/ErrorObject.h"

namespace t4::test {
namespace {

const std::u16string kKey11 = u"Software\\Microsoft\\Office\\11.0\\Outlook\\Categories|Masterlist";
const std::u16string kKey8 = u"Software\\Microsoft\\Office\\8.0\\Outlook\\Categories|Masterlist";

using Bytes = std::vector<uint8_t>;

class SaveTest : public SessionFixture {
 protected:
  FakeRulesReader& Reader() { return *ports.rules->reader; }
  MemoryCategoryStore& Outlook2007List() { return *Reader().list; }

  FakePorts ports;
};

TEST_F(SaveTest, NothingChangedTouchesNoStore) {
  Init(u"12.0");
  Outlook2007List().entries = {{u"{A}", u"Red", 0, 0}};
  app->ReadMasterlist();
  const int handedOut = Reader().listsHandedOut;
  app->SaveChanges();
  EXPECT_EQ(Reader().listsHandedOut, handedOut);
  EXPECT_TRUE(Outlook2007List().log.empty());
  EXPECT_EQ(Reader().rules->saves, 0);
  EXPECT_EQ(ports.registry->writes + ports.registry->deletes, 0);
}

TEST_F(SaveTest, NothingChangedBeforeOutlook2007WritesNothing) {
  Init(u"11.0");
  app->ReadMasterlist();
  app->SaveChanges();
  EXPECT_EQ(ports.registry->writes + ports.registry->deletes, 0);
}

TEST_F(SaveTest, MasterListIsWrittenForEachRegistryVersion) {
  struct Case {
    const char16_t* version;
    const char16_t* key;
    RegistryData stored;
  };
  const Case cases[] = {
      {u"8.0", u"8.0", std::u16string(u"A;")},
      {u"9.0", u"9.0", std::u16string(u"A;")},
      {u"10.0", u"10.0", Bytes{0x41, 0, 0x3B, 0, 0, 0}},
      {u"11.0", u"11.0", Bytes{0x41, 0, 0x3B, 0, 0, 0}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(Utf::ToUtf8(c.version));
    Init(c.version);
    app->ReadMasterlist();
    cats->Add(u"A", true);
    cats->Add(u"NotInList", false);
    app->SaveChanges();
    const std::u16string key = u"Software\\Microsoft\\Office\\" + std::u16string(c.key) +
                               u"\\Outlook\\Categories|Masterlist";
    ASSERT_TRUE(ports.registry->values.count(key));
    EXPECT_EQ(ports.registry->values[key], c.stored);
    EXPECT_FALSE(app->Changed());
    EXPECT_FALSE(Cat(u"A")->Changed());
  }
}

TEST_F(SaveTest, EmptyListIsWrittenAsEmptyStringOrRemoved) {
  ports.registry->values[kKey8] = std::u16string(u"Old;");
  ports.registry->values[kKey11] = Bytes{0x41, 0, 0x3B, 0, 0, 0};
  for (const char16_t* version : {u"8.0", u"11.0"}) {
    SCOPED_TRACE(Utf::ToUtf8(version));
    Init(version);
    app->ReadMasterlist();
    ASSERT_EQ(cats->Count(true), 2);
    cats->Delete(ItemIndex::Position(2));
    const int writes = ports.registry->writes;
    app->SaveChanges();
    // The save happens even with nothing left to write.
    EXPECT_GT(ports.registry->writes + ports.registry->deletes, writes);
  }
  EXPECT_EQ(ports.registry->values[kKey8], RegistryData(std::u16string()));
  EXPECT_EQ(ports.registry->values.count(kKey11), 0u);
}

TEST_F(SaveTest, RulesStepIsSkippedBeforeOutlook2007) {
  Init(u"11.0");
  app->ReadMasterlist();
  cats->Add(u"A", true);
  app->SaveChanges();
  EXPECT_EQ(ports.rules->readersCreated, 0);
  EXPECT_EQ(Reader().rules->saves, 0);
}

TEST_F(SaveTest, Outlook2007WritesChangedCategoriesAndCopiesNewIdentifiersBack) {
  Init(u"12.0");
  Outlook2007List().entries = {{u"{A}", u"Red", 0, 0}, {u"{B}", u"Blue", 7, 0}};
  Outlook2007List().lastId = 10;
  app->ReadMasterlist();
  cats->Add(u"New", true, u"", 3, 2);
  Cat(u"Red")->SetColor(5);
  app->SaveChanges();
  EXPECT_EQ(Outlook2007List().log, (std::vector<std::string>{"Update {A}", "Add New"}));
  EXPECT_EQ(Cat(u"New")->CategoryID(), u"{11}");
  EXPECT_EQ(Cat(u"Red")->CategoryID(), u"{A}");
  EXPECT_EQ(Outlook2007List().entries.back().color, 3);
  EXPECT_EQ(Outlook2007List().entries.back().shortCut, 2);
  EXPECT_EQ(Outlook2007List().entries.front().color, 5);
  EXPECT_FALSE(app->Changed());
}

TEST_F(SaveTest, Outlook2007AnswerNeverOverwritesAnExistingIdentifier) {
  Init(u"12.0");
  app->ReadMasterlist();
  cats->Add(u"Own", true, u"{MINE}", 1, 0);
  // The store knows no "{MINE}" and creates it afresh under a new identifier.
  app->SaveChanges();
  EXPECT_EQ(Outlook2007List().entries.size(), 1u);
  EXPECT_EQ(Cat(u"Own")->CategoryID(), u"{MINE}");
}

TEST_F(SaveTest, Outlook2007WithOnlyADeletionPendingWritesOnlyTheDeletion) {
  Init(u"12.0");
  Outlook2007List().entries = {{u"{A}", u"Red", 0, 0}};
  app->ReadMasterlist();
  cats->Delete(ItemIndex::Position(2));
  EXPECT_EQ(CategoriesAccess::DeletedList(*cats)->ToString(), u"{A};;;");
  app->SaveChanges();
  EXPECT_EQ(Outlook2007List().log, (std::vector<std::string>{"Remove {A}"}));
  EXPECT_TRUE(Outlook2007List().entries.empty());
  EXPECT_EQ(CategoriesAccess::DeletedList(*cats)->ToString(), u"");
}

TEST_F(SaveTest, Outlook2007WithNothingToWriteDoesNotWrite) {
  Init(u"12.0");
  Outlook2007List().entries = {{u"{A}", u"Red", 0, 0}};
  app->ReadMasterlist();
  // Changed, but not a master-list category: nothing to write, nothing
  // deleted.
  cats->Add(u"ItemsOnly", false);
  ASSERT_TRUE(cats->Changed());
  app->SaveChanges();
  EXPECT_EQ(Outlook2007List().commits, 0);
  EXPECT_TRUE(Outlook2007List().log.empty());
  EXPECT_FALSE(cats->Changed());
}

TEST_F(SaveTest, RenameReachesTheRulesWhichAreSavedOnce) {
  Init(u"12.0");
  Outlook2007List().entries = {{u"{A}", u"Work", 0, 0}};
  Reader().rules->rules = {{{u"work", u"Home"}, {u"Other"}}, {{u"Home"}, {u"Work"}}, {{}, {}}};
  app->ReadMasterlist();
  Cat(u"Work")->SetName(u"Job");
  EXPECT_TRUE(Reader().rulesObject->Changed());
  app->SaveChanges();
  EXPECT_EQ(Reader().rules->saves, 1);
  EXPECT_FALSE(Reader().rulesObject->Changed());
  EXPECT_EQ(Reader().rules->rules[0].first, (Names{u"Job", u"Home"}));
  EXPECT_EQ(Reader().rules->rules[1].second, (Names{u"Job"}));
  EXPECT_EQ(Outlook2007List().entries.front().name, u"Job");
  app->SaveChanges();
  EXPECT_EQ(Reader().rules->saves, 1);
}

TEST_F(SaveTest, RenameBeforeOutlook2007LeavesRulesAlone) {
  Init(u"11.0");
  app->ReadMasterlist();
  cats->Add(u"Work", true);
  Cat(u"Work")->SetName(u"Job");
  EXPECT_EQ(Reader().rulesHandedOut, 0);
  EXPECT_EQ(Cat(u"Job")->Name(), u"Job");
}

TEST_F(SaveTest, OnlyItemChangesRunOnlyTheItemStep) {
  Init(u"11.0");
  ReadList({u"Work"});
  auto item = ReadItem({u"Work"});
  OutlookItemAccess::SetChanged(*item, true);
  ASSERT_FALSE(cats->Changed());
  ASSERT_TRUE(items->Changed());
  // The item was made by hand, not read from a store the session opened:
  // the item step is reached and cannot find its message.
  try {
    app->SaveChanges();
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), cmItemNotFound);
    EXPECT_NE(
        e.Source().find(u"Tandrel4.OutlookItem.Save (0); Tandrel4.OutlookItems.SaveChanges (0); "
                        u"Tandrel4.Application.SaveChanges (0)"),
        std::u16string::npos);
  }
  EXPECT_EQ(ports.registry->writes + ports.registry->deletes, 0);
}

TEST_F(SaveTest, AddingAMemberAlsoRewritesTheMasterList) {
  // A new membership marks its category changed, and a changed category
  // marks the collection: the master list is written again as it stands
  // before the items are.
  Init(u"11.0");
  ports.registry->values[kKey11] = Bytes{'W', 0, ';', 0, 'H', 0, ';', 0, 0, 0};
  app->ReadMasterlist();
  auto item = ReadItem({u"Work"});
  item->CategoriesAdd(Cat(u"H"));
  ASSERT_TRUE(cats->Changed());
  EXPECT_THROW(app->SaveChanges(), Error);
  EXPECT_EQ(ports.registry->writes, 1);
  EXPECT_EQ(ports.registry->values[kKey11],
            RegistryData(Bytes{'W', 0, ';', 0, 'H', 0, ';', 0, 0, 0}));
}

TEST_F(SaveTest, FirstErrorEndsSaveChangesAndIsLabelled) {
  Init(u"12.0");
  app->ReadMasterlist();
  cats->Add(u"New", true);
  Reader().rules->rules = {{{u"New"}, {}}};
  Cat(u"New")->SetName(u"Newer");
  // The list object fails: the rules are not saved.
  Reader().list = nullptr;
  try {
    app->SaveChanges();
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), RunTimeError::kObjectVariableNotSet);
    EXPECT_NE(e.Source().find(u"Application.SaveChanges"), std::u16string::npos);
  }
  EXPECT_EQ(Reader().rules->saves, 0);
  EXPECT_TRUE(app->Changed());
}

TEST_F(SaveTest, UndoStaysPossibleAfterSaving) {
  Init(u"11.0");
  app->ReadMasterlist();
  cats->Add(u"A", true);
  app->SetBatchMode(true);
  app->SaveChanges();
  EXPECT_TRUE(app->UndoIsPossible());
  EXPECT_TRUE(app->BatchMode());
}

TEST_F(SaveTest, Outlook2007StoreHasNoKeyAndKeepsItsInput) {
  Init(u"12.0");
  auto store = ApplicationAccess::MasterlistStore(*app);
  ASSERT_TRUE(store);
  EXPECT_EQ(store->Section(), u"");
  EXPECT_EQ(store->Setting(), u"Masterlist");
  EXPECT_EQ(store->Convert(u"{A};Red;0;0"), u"{A};Red;0;0");
  EXPECT_EQ(store->Format(), u"");
}

TEST_F(SaveTest, Outlook2007StoreWithoutRulesComponentFailsOnInit) {
  Init(u"11.0");  // no rules component
  Masterlist07 store;
  EXPECT_THROW(store.InitParent(app), Error);
  EXPECT_THROW(store.ReadCategories(), Error);
  Masterlist07 unlinked;
  EXPECT_THROW(unlinked.Init(0), Error);
}

}  // namespace
}  // namespace t4::test
