#include "ModelFixture.h"
#include "journal/Journal.h"
#include "model/ApplicationContext.h"
#include "model/internal/CategoriesAccess.h"
#include "session/internal/ApplicationAccess.h"
#include "support/HandleTable.h"
#include "support/Language.h"

namespace t4 {
namespace {

using test::Events;

class CategoriesTest : public test::ModelTest {};

TEST_F(CategoriesTest, AddOfAnExistingNameReturnsItUnchanged) {
  ReadList({u"work"});
  auto existing = Cat(u"work");
  auto got = cats->Add(u"Work", true, u"", 5, 5);
  EXPECT_EQ(got, existing);
  EXPECT_EQ(got->Name(), u"work");
  EXPECT_EQ(got->Color(), -2);
  EXPECT_TRUE(log->events.empty());
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(), 0);
}

TEST_F(CategoriesTest, AddCreatesJournalsAndAnnounces) {
  ReadList({});
  auto c = cats->Add(u"Work", true);
  EXPECT_EQ(c->ID(), 1);
  EXPECT_EQ(c->Color(), 0);  // missing optional arguments count as 0
  EXPECT_EQ(c->ShortCut(), 0);
  EXPECT_TRUE(c->Changed());
  EXPECT_TRUE(cats->Changed());
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(), 1);
  EXPECT_EQ(log->events, (Events{"ItemAdd Work"}));
  EXPECT_EQ(cats->Item(ItemIndex::Key(u"1")), c);
  EXPECT_EQ(cats->Item(ItemIndex::Position(2)), c);
}

TEST_F(CategoriesTest, IdsAreNeverReused) {
  ReadList({u"a", u"b", u"c"});
  cats->Delete(ItemIndex::Key(u"3"));
  EXPECT_EQ(cats->Item(ItemIndex::Key(u"3")), nullptr);
  auto d = cats->Add(u"d", true);
  EXPECT_GE(d->ID(), 4);
}

TEST_F(CategoriesTest, DeleteOfAnUnknownIndexDoesNothing) {
  ReadList({u"a"});
  cats->Delete(ItemIndex::Key(u"7"));
  cats->Delete(ItemIndex::Position(9));
  cats->Delete(ItemIndex::Key(u"x"));
  EXPECT_EQ(cats->Count(true), 2);
  EXPECT_FALSE(cats->Changed());
  EXPECT_TRUE(log->events.empty());
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(), 0);
}

TEST_F(CategoriesTest, DeleteDetachesItemsAndAnnouncesOnlyItemRemove) {
  ReadList({u"Work"});
  auto item = ReadItem({u"Work"});
  cats->Delete(ItemIndex::Key(u"1"));
  EXPECT_EQ(item->CategoriesCount(), 0);
  EXPECT_TRUE(item->Changed());
  // The item went back to the default category.
  EXPECT_EQ(MemberIds(*cats->DefaultCategory(true)), std::vector<int32_t>{1});
  EXPECT_EQ(log->events, (Events{"MemberAdd  1", "ItemRemove 1"}));
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(),
            1);  // the item-side removal is not journalled
}

TEST_F(CategoriesTest, WithoutItemEventsNoItemEventIsRaised) {
  ReadList({u"Work"});
  ReadItem({u"Work"});
  cats->SetFireItemEvents(false);
  auto c = cats->Add(u"New", true);
  c->SetColor(3);
  c->SetName(u"Newer");
  cats->Delete(ItemIndex::Key(u"1"));
  // Member events still follow their own switch.
  EXPECT_EQ(log->events, (Events{"MemberAdd  1"}));
  cats->SetFireMemberEvents(false);
  log->events.clear();
  cats->Item(ItemIndex::Key(u"0"), true)->Member(ItemIndex::Position(1))->CategoriesAdd(c);
  EXPECT_TRUE(log->events.empty());
}

TEST_F(CategoriesTest, NameExistComparesLowerCaseExactlyWithoutTrimming) {
  ReadList({u"B\u00fcro", u"Work"});
  std::shared_ptr<Category> found;
  EXPECT_TRUE(cats->NameExist(u"WORK", found));
  EXPECT_EQ(found->Name(), u"Work");
  EXPECT_TRUE(cats->NameExist(u"B\u00dcRO"));
  EXPECT_FALSE(cats->NameExist(u"Buero"));
  EXPECT_FALSE(cats->NameExist(u" Work"));
  EXPECT_TRUE(cats->NameExist(u"", found));  // the default category
  EXPECT_EQ(found->ID(), 0);
}

TEST_F(CategoriesTest, AddTransliteratesAfterTheDuplicateTest) {
  ReadList({u"Buero"});
  Language::SetLanguageID(1033);
  std::u16string name = u"B\u00fcro";
  auto c = cats->Add(name, true);
  EXPECT_NE(c, Cat(u"Buero"));  // NameExist finds the first one, the old category
  EXPECT_EQ(c->Name(), u"Buero");
  EXPECT_EQ(name, u"Buero");
  EXPECT_EQ(cats->Count(true), 3);  // a second "Buero" beside the first: intended
}

TEST_F(CategoriesTest, ImportingKeepsNamesAsTheyCome) {
  ReadList({});
  Language::SetLanguageID(1033);
  CategoriesAccess::SetImporting(*cats, true);
  EXPECT_EQ(cats->Add(u"B\u00fcro", true)->Name(), u"B\u00fcro");
}

TEST_F(CategoriesTest, Outlook2007DeletionWithEmptyIdentifierListsNothing) {
  ProcessValues::SetOutlookVersion(12);
  CategoriesAccess::Clear(*cats);
  ReadList({u"Plain"});
  cats->Add(u"Red", true, u"{A}", 7, 0);
  cats->Delete(ItemIndex::Key(u"1"));  // "Plain", no identifier
  EXPECT_EQ(CategoriesAccess::DeletedList(*cats)->ToString(), u"");
  cats->Delete(ItemIndex::Key(u"2"));
  EXPECT_EQ(CategoriesAccess::DeletedList(*cats)->ToString(), u"{A};;;");
  EXPECT_EQ(cats->Count(true), 1);  // only the default category is left
}

TEST_F(CategoriesTest, ClearStartsIdsAgainAndKeepsMemberAndMasterlistFilters) {
  ReadList({u"a"});
  cats->SetFilter(1, 2, cmfmMemberOnly, cmmlNoMasterlist);
  CategoriesAccess::Clear(*cats);
  EXPECT_EQ(cats->FilterCategories(), 0);
  EXPECT_EQ(cats->FilterTypes(), 0);
  EXPECT_EQ(cats->FilterMember(), cmfmMemberOnly);
  EXPECT_EQ(cats->FilterMasterlist(), cmmlNoMasterlist);
  EXPECT_EQ(cats->Add(u"x", true)->ID(), 0);
}

TEST_F(CategoriesTest, LookupByIdFollowsAddDeleteUndoAndClear) {
  ReadList({u"A", u"B"});
  const int32_t a = Cat(u"A")->ID();
  EXPECT_EQ(cats->Lookup(a), Cat(u"A"));
  EXPECT_EQ(cats->Lookup(999), nullptr);
  EXPECT_EQ(cats->Lookup(-1), nullptr);
  cats->Delete(ItemIndex::Key(a));
  EXPECT_EQ(cats->Lookup(a), nullptr);
  app->Undo();
  ASSERT_NE(cats->Lookup(a), nullptr);
  EXPECT_EQ(cats->Lookup(a)->Name(), u"A");
  EXPECT_EQ(cats->Lookup(a), cats->ItemById(a, true));
  app->Redo();
  EXPECT_EQ(cats->Lookup(a), nullptr);
  auto added = cats->Add(u"New", true);
  EXPECT_EQ(cats->Lookup(added->ID()), added);
  CategoriesAccess::Clear(*cats);
  EXPECT_EQ(cats->Lookup(added->ID()), nullptr);
  EXPECT_EQ(cats->Lookup(a), nullptr);
}

TEST_F(CategoriesTest, SubscriberMayCallBackIntoTheModel) {
  ReadList({u"Work"});
  struct Renamer : ICategoriesEvents {
    std::shared_ptr<Categories> cats;
    void ItemAdd(const std::shared_ptr<Category>& c) override {
      c->SetColor(9);  // edits the category being announced
      // and, once, adds another from inside the event
      if (c->Name() == u"New") cats->Add(c->Name() + u"2", true);
    }
  };
  auto renamer = std::make_shared<Renamer>();
  renamer->cats = cats;
  const int32_t cookie = cats->Advise(renamer);
  cats->Add(u"New", true);
  cats->Unadvise(cookie);
  EXPECT_EQ(Cat(u"New")->Color(), 9);
  ASSERT_NE(Cat(u"New2"), nullptr);
  EXPECT_EQ(Cat(u"New2")->Color(), 9);
  // The log subscribed first, so it hears each event before the renamer acts.
  EXPECT_EQ(log->events,
            (Events{"ItemAdd New", "ItemChange New", "ItemAdd New2", "ItemChange New2"}));
}

TEST_F(CategoriesTest, SubscribersMayLeaveDuringAnEvent) {
  ReadList({});
  struct Leaver : ICategoriesEvents {
    std::shared_ptr<Categories> cats;
    int32_t cookie = 0;
    int calls = 0;
    void ItemAdd(const std::shared_ptr<Category>&) override {
      ++calls;
      cats->Unadvise(cookie);
    }
  };
  auto leaver = std::make_shared<Leaver>();
  leaver->cats = cats;
  leaver->cookie = cats->Advise(leaver);
  cats->Add(u"a", true);
  cats->Add(u"b", true);
  EXPECT_EQ(leaver->calls, 1);
  EXPECT_EQ(log->events, (Events{"ItemAdd a", "ItemAdd b"}));
}

}  // namespace
}  // namespace t4

namespace t4 {
namespace {

TEST(CategoriesUnlinked, AFailedAddNeverHandsItsIdOutAgain) {
  // A collection without an owner cannot journal: Add fails after the
  // category took its ID, and the next Add must not get the same ID.
  auto cats = std::make_shared<Categories>();
  EXPECT_THROW(cats->Add(u"a", true), Error);
  EXPECT_THROW(cats->Add(u"b", true), Error);
  std::shared_ptr<Category> a;
  std::shared_ptr<Category> b;
  ASSERT_TRUE(cats->NameExist(u"a", a));
  ASSERT_TRUE(cats->NameExist(u"b", b));
  EXPECT_NE(a->ID(), b->ID());
}

}  // namespace
}  // namespace t4

namespace t4 {
namespace {

class CategoriesParentTest : public test::ModelTest {};

TEST_F(CategoriesParentTest, InitLinksToTheApplicationThroughItsContextHandle) {
  ReadList({u"Work"});
  cats->Init(0);
  EXPECT_EQ(CategoriesAccess::Parent(*cats), nullptr);
  // An application is known by the handle of its context, the part of it
  // the model reaches; a handle issued for another type links nothing.
  cats->Init(HandleTable::HandleOf(app));
  EXPECT_EQ(CategoriesAccess::Parent(*cats), nullptr);
  cats->Init(HandleTable::HandleOf<ApplicationContext>(app));
  EXPECT_EQ(CategoriesAccess::Parent(*cats).get(), static_cast<ApplicationContext*>(app.get()));
  // Linked again, edits are journalled through the application's journal.
  const int32_t steps = ApplicationAccess::Journal(*app)->Count();
  Cat(u"Work")->SetColor(3);
  EXPECT_EQ(ApplicationAccess::Journal(*app)->Count(), steps + 1);
}

}  // namespace
}  // namespace t4
