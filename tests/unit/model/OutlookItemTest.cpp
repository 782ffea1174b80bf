#include "ModelFixture.h"
#include "journal/Journal.h"
#include "model/internal/CategoriesAccess.h"
#include "model/internal/OutlookItemAccess.h"
#include "model/internal/OutlookItemsAccess.h"
#include "session/internal/ApplicationAccess.h"

namespace t4 {
namespace {

using test::Events;

class OutlookItemTest : public test::ModelTest {};

TEST_F(OutlookItemTest, AddingACategoryTheItemHasChangesNothing) {
  ReadList({u"Work"});
  auto item = ReadItem({u"Work"});
  item->CategoriesAdd(Cat(u"Work"));
  EXPECT_FALSE(item->Changed());
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(), 0);
  EXPECT_EQ(Cat(u"Work")->MemberCount(), 1);
  EXPECT_TRUE(log->events.empty());
}

TEST_F(OutlookItemTest, FirstCategoryLeavesTheDefaultLastOneReturnsToIt) {
  ReadList({u"Work"});
  auto item = ReadItem({});
  auto def = cats->DefaultCategory(true);
  EXPECT_EQ(MemberIds(*def), std::vector<int32_t>{1});
  item->CategoriesAdd(Cat(u"Work"));
  EXPECT_TRUE(MemberIds(*def).empty());
  EXPECT_EQ(MemberIds(*Cat(u"Work")), std::vector<int32_t>{1});
  EXPECT_TRUE(item->Changed());
  EXPECT_TRUE(items->Changed());
  EXPECT_EQ(log->events, (Events{"MemberAdd Work 1", "MemberRemove  1"}));
  log->events.clear();
  item->CategoriesRemove(ItemIndex::Position(1));
  EXPECT_EQ(MemberIds(*def), std::vector<int32_t>{1});
  EXPECT_TRUE(MemberIds(*Cat(u"Work")).empty());
  EXPECT_EQ(log->events, (Events{"MemberRemove Work 1", "MemberAdd  1"}));
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(), 2);
}

TEST_F(OutlookItemTest, MoveKeepsTheTargetAndRemovesTheOthersLastFirst) {
  ReadList({u"A", u"B", u"C"});
  auto item = ReadItem({u"A", u"B", u"C"});
  item->MoveToCategory(Cat(u"B"));
  EXPECT_EQ(item->CategoriesString(), u"B");
  EXPECT_EQ(log->events, (Events{"MemberRemove C 1", "MemberRemove A 1"}));
  ASSERT_EQ(ApplicationAccess::Journal(*app)->Count(), 2);  // two removals, each its own step
  auto step = ApplicationAccess::Journal(*app)->PreviousStep();
  EXPECT_EQ((*step)[0].Kind, Action::kRemoved);
  EXPECT_EQ((*step)[0].CategoryID, Cat(u"A")->ID());
  EXPECT_TRUE(MemberIds(*cats->DefaultCategory(true)).empty());
}

TEST_F(OutlookItemTest, MoveOfAnItemWithoutCategoriesAddsTheTargetAndLeavesTheDefault) {
  ReadList({u"A"});
  auto item = ReadItem({});
  item->MoveToCategory(Cat(u"A"));
  EXPECT_EQ(item->CategoriesString(), u"A");
  EXPECT_TRUE(MemberIds(*cats->DefaultCategory(true)).empty());
  EXPECT_EQ(MemberIds(*Cat(u"A")), std::vector<int32_t>{1});
  EXPECT_EQ(log->events, (Events{"MemberAdd A 1", "MemberRemove  1"}));
}

// Deletes every category that announces a member leaving or arriving
// under the given name, from inside the event.
struct CategoryDeleter : ICategoriesEvents {
  std::shared_ptr<Categories> cats;
  std::u16string name;
  bool onAdd = false;
  void Handle(const std::shared_ptr<Category>& c) {
    if (c->Name() == name) cats->Delete(ItemIndex::Key(c->ID()));
  }
  void MemberAdd(const std::shared_ptr<Category>& c, const std::shared_ptr<OutlookItem>&) override {
    if (onAdd) Handle(c);
  }
  void MemberRemove(const std::shared_ptr<Category>& c,
                    const std::shared_ptr<OutlookItem>&) override {
    if (!onAdd) Handle(c);
  }
};

TEST_F(OutlookItemTest, SubscriberMayDeleteTheCategoryAMoveTakesTheItemOutOf) {
  ReadList({u"A", u"B", u"C"});
  auto item = ReadItem({u"A", u"B"});
  auto deleter = std::make_shared<CategoryDeleter>();
  deleter->cats = cats;
  deleter->name = u"B";
  const int32_t cookie = cats->Advise(deleter);
  const int32_t b = Cat(u"B")->ID();
  item->MoveToCategory(Cat(u"C"));
  cats->Unadvise(cookie);
  EXPECT_EQ(item->CategoriesString(), u"C");
  EXPECT_EQ(cats->Lookup(b), nullptr);
  EXPECT_EQ(Cat(u"B"), nullptr);
  EXPECT_EQ(MemberIds(*Cat(u"C")), std::vector<int32_t>{1});
  EXPECT_TRUE(MemberIds(*Cat(u"A")).empty());
}

TEST_F(OutlookItemTest, SubscriberMayDeleteTheCategoryAnUndoPutsTheItemBackInto) {
  ReadList({u"A", u"B"});
  auto item = ReadItem({u"A"});
  app->SetBatchMode(true);
  item->MoveToCategory(Cat(u"B"));
  app->SetBatchMode(false);
  auto deleter = std::make_shared<CategoryDeleter>();
  deleter->cats = cats;
  deleter->name = u"A";
  deleter->onAdd = true;
  const int32_t cookie = cats->Advise(deleter);
  app->Undo();
  cats->Unadvise(cookie);
  // The undo put the item back into A, whose deletion then took it out
  // again, and took the item out of B.
  EXPECT_EQ(Cat(u"A"), nullptr);
  EXPECT_EQ(item->CategoriesCount(), 0);
  EXPECT_TRUE(MemberIds(*Cat(u"B")).empty());
  EXPECT_EQ(MemberIds(*cats->DefaultCategory(true)), std::vector<int32_t>{1});
}

TEST_F(OutlookItemTest, MoveToNothingRaisesWithItsLabel) {
  ReadList({u"A"});
  auto item = ReadItem({u"A"});
  try {
    item->MoveToCategory(nullptr);
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), 91);
    EXPECT_EQ(e.Source(), u"Tandrel4; Tandrel4.OutlookItem.MoveToCategory (0)");
  }
  EXPECT_EQ(item->CategoriesString(), u"A");
}

TEST_F(OutlookItemTest, CategoriesStringAndArray) {
  ReadList({u"Business", u"Private"});
  auto both = ReadItem({u"Business", u"Private"});
  auto none = ReadItem({});
  EXPECT_EQ(both->CategoriesString(), u"Business;Private");
  EXPECT_EQ(both->CategoriesArray(), (std::vector<std::u16string>{u"Business", u"Private"}));
  EXPECT_EQ(none->CategoriesString(), u"");
  EXPECT_TRUE(none->CategoriesArray().empty());
  EXPECT_EQ(both->CategoriesCount(), 2);
}

TEST_F(OutlookItemTest, ItemTypeFromTheMessageClassPrefix) {
  ReadList({});
  struct Case {
    const char16_t* cls;
    int32_t type;
  };
  const Case cases[] = {
      {u"IPM.Contact", 2},
      {u"ipm.stickynote", 5},
      {u"report.ipm.note.ndr", 0},
      {u"IPM.Note.SMIME", 0},
      {u"IPM.TaskRequest", 3},
      {u"IPM.Appointment", 1},
      {u"IPM.Activity", 4},
      {u"IPM.DistList", 7},
      {u"IPM.Post", 6},
      {u"IPM.Schedule.Meeting", 0},
      {u"", 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(Utf::ToUtf8(c.cls));
    auto item = OutlookItemsAccess::Add(*items, u"E", u"S", u"F", u"Subj", c.cls, 0);
    EXPECT_EQ(item->ItemType(), c.type);
  }
  EXPECT_EQ(items->Item(ItemIndex::Key(u"1"))->MessageClass(), u"ipm.contact");
}

TEST_F(OutlookItemTest, RemoveByPositionOrCategoryKey) {
  ReadList({u"A", u"B", u"C"});
  auto item = ReadItem({u"A", u"B", u"C"});
  item->CategoriesRemove(ItemIndex::Key(Cat(u"B")->ID()));
  EXPECT_EQ(item->CategoriesString(), u"A;C");
  item->CategoriesRemove(ItemIndex::Position(2));
  EXPECT_EQ(item->CategoriesString(), u"A");
  item->CategoriesRemove(ItemIndex::Position(5));
  item->CategoriesRemove(ItemIndex::Key(u"99"));
  item->CategoriesRemove(ItemIndex::Key(u"x"));
  EXPECT_EQ(item->CategoriesString(), u"A");
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(), 2);
}

TEST_F(OutlookItemTest, RenamedCategoryStaysAssigned) {
  ReadList({u"A"});
  auto item = ReadItem({u"A"});
  Cat(u"A")->SetName(u"Alpha");
  EXPECT_EQ(item->CategoriesString(), u"Alpha");
}

TEST_F(OutlookItemTest, FieldsFromInitialize) {
  ReadList({});
  auto item = OutlookItemsAccess::Add(*items, u"00AB", u"STORE1", u"Posteingang", u"Hallo",
                                      u"IPM.Note", 45000.25);
  EXPECT_EQ(item->ID(), 1);
  EXPECT_EQ(item->EntryID(), u"00AB");
  EXPECT_EQ(item->StoreID(), u"STORE1");
  EXPECT_EQ(item->Folder(), u"Posteingang");
  EXPECT_EQ(item->Subject(), u"Hallo");
  EXPECT_EQ(item->DateTime(), 45000.25);
  EXPECT_FALSE(item->Changed());
  EXPECT_FALSE(OutlookItemAccess::SuppressJournal(*item));
}

class OutlookItemsTest : public test::ModelTest {};

TEST_F(OutlookItemsTest, FirstItemHasIdOneAndZeroFindsNothing) {
  ReadList({});
  ReadItem({});
  EXPECT_EQ(items->Item(ItemIndex::Position(0)), nullptr);
  EXPECT_EQ(items->Item(ItemIndex::Key(u"0")), nullptr);
  EXPECT_EQ(items->Item(ItemIndex::Position(1))->ID(), 1);
  EXPECT_EQ(items->Item(ItemIndex::Key(u"1"))->ID(), 1);
  OutlookItemsAccess::Clear(*items);
  EXPECT_EQ(items->Count(), 0);
  EXPECT_EQ(OutlookItemsAccess::Add(*items, u"E", u"S", u"F", u"x", u"IPM.Note", 0)->ID(), 1);
}

TEST(CategoriesDeleted, EntriesEndInThreeSemicolonsAndJoinWithOne) {
  CategoriesDeleted d;
  EXPECT_EQ(d.ToString(), u"");
  d.Add(u"");
  EXPECT_EQ(d.ToString(), u"");
  d.Add(u"{A}");
  d.Add(u"{B}");
  d.Add(u"{A}");  // no duplicate test
  EXPECT_EQ(d.ToString(), u"{A};;;;{B};;;;{A};;;");
  for (int i = 0; i < 120; ++i) d.Add(u"{X}");
  EXPECT_EQ(d.Size(), 123u);
  d.Clear();
  EXPECT_EQ(d.ToString(), u"");
}

}  // namespace
}  // namespace t4

namespace t4 {
namespace {

// After the items are read again, the items of the earlier reading are out
// of the model: they keep their own list, but no category takes them, and a
// member list of the earlier reading still names its own items.
class ReadingAgainTest : public test::ModelTest {};

TEST_F(ReadingAgainTest, ItemsOfAnEarlierReadingStayOutOfTheModel) {
  ReadList({u"Work", u"Home"});
  auto old = ReadItem({u"Work"});
  auto work = Cat(u"Work");
  auto home = Cat(u"Home");
  auto oldMembers = work->MemberCollection(true).Snapshot();
  ASSERT_EQ(oldMembers.size(), 1u);

  CategoriesAccess::ClearAllMembers(*cats);
  OutlookItemsAccess::Clear(*items);
  auto fresh = ReadItem({});
  ASSERT_EQ(fresh->ID(), old->ID());  // the same ID, another item

  old->CategoriesAdd(home);
  EXPECT_EQ(old->CategoriesCount(), 2);  // its own list
  EXPECT_TRUE(old->Changed());
  EXPECT_FALSE(items->Changed());  // the new reading is untouched
  EXPECT_EQ(home->MemberCount(true), 0);
  EXPECT_EQ(work->MemberCount(true), 0);
  EXPECT_FALSE(app->UndoIsPossible());
  EXPECT_TRUE(log->events.empty());
  EXPECT_EQ(oldMembers[0], old);
}

TEST_F(ReadingAgainTest, AnItemKeptAfterTerminateStillReadsItsTexts) {
  ReadList({u"Work"});
  auto item = ReadItem({u"Work"}, u"IPM.Contact");
  app->Terminate();
  app.reset();
  cats.reset();
  items.reset();
  EXPECT_EQ(item->StoreID(), u"STORE");
  EXPECT_EQ(item->Folder(), u"Inbox");
  EXPECT_EQ(item->MessageClass(), u"ipm.contact");
  EXPECT_EQ(item->ItemType(), 2);
  EXPECT_EQ(item->CategoriesCount(), 1);
  EXPECT_EQ(OutlookItemAccess::Parent(*item), nullptr);
}

TEST_F(ReadingAgainTest, AnItemUnlinkedFromItsCollectionOnlyKeepsItsOwnList) {
  ReadList({u"Work", u"Home"});
  auto item = ReadItem({u"Work"});
  item->ResetParentPtr();
  item->CategoriesAdd(Cat(u"Home"));
  EXPECT_EQ(item->CategoriesCount(), 2);
  EXPECT_EQ(Cat(u"Home")->MemberCount(true), 0);
  EXPECT_FALSE(app->UndoIsPossible());
  EXPECT_TRUE(log->events.empty());
}

}  // namespace
}  // namespace t4
