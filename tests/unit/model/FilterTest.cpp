#include "ModelFixture.h"
#include "model/internal/CategoriesAccess.h"
#include "model/internal/CategoryAccess.h"
#include "model/internal/OutlookItemsAccess.h"

namespace t4 {
namespace {

class FilterTest : public test::ModelTest {
 protected:
  // Work: items 1 (Work), 2 (Work+Private), 3 (task: Work+Private+Extra)
  // Private: 2, 3; Extra: 3; Unused (in list, no members); default: item 4.
  void SetUp() override {
    ModelTest::SetUp();
    ReadList({u"Work", u"Private", u"Unused"});
    ReadItem({u"Work"});
    ReadItem({u"Work", u"Private"});
    ReadItem({u"Work", u"Private", u"Extra"}, u"IPM.Task");
    ReadItem({});
  }
};

std::vector<std::u16string> Names(const std::vector<std::shared_ptr<Category>>& list) {
  std::vector<std::u16string> names;
  for (const auto& c : list) names.push_back(c->Name());
  return names;
}

TEST_F(FilterTest, NoFilterShowsEverything) {
  cats->SetFilter(0, -1, cmfmAll, cmmlAll);
  EXPECT_FALSE(CategoriesAccess::HasCategoryFilter(*cats));
  EXPECT_EQ(cats->Count(), cats->Count(true));
  CategoriesAccess::All(*cats).ForEach([](int32_t, const std::shared_ptr<Category>& c) {
    EXPECT_EQ(c->MemberCount(false), c->MemberCount(true));
    EXPECT_FALSE(CategoryAccess::HasFilteredMembers(*c));
  });
  EXPECT_EQ(cats->CountFilteredMember(), 4);  // OutlookItems.Count
}

TEST_F(FilterTest, MinimumTwoCategoriesWithMembersOnly) {
  cats->SetFilter(2, -1, cmfmMemberOnly, cmmlAll);
  EXPECT_EQ(Names(cats->Enumerate()), (std::vector<std::u16string>{u"Work", u"Private", u"Extra"}));
  EXPECT_EQ(MemberIds(*Cat(u"Work"), false), (std::vector<int32_t>{2, 3}));
  EXPECT_EQ(MemberIds(*Cat(u"Extra"), false), (std::vector<int32_t>{3}));
  EXPECT_EQ(Cat(u"Work")->MemberCount(true), 3);
  EXPECT_EQ(cats->CountFilteredMember(), 2);
  EXPECT_EQ(cats->Count(), 3);
  EXPECT_EQ(cats->Count(true), 5);
}

TEST_F(FilterTest, MemberFilterAboveTwoKeepsEveryCategory) {
  cats->SetFilter(0, -1, 3, 0);
  EXPECT_TRUE(CategoriesAccess::HasCategoryFilter(*cats));
  EXPECT_EQ(cats->Count(), cats->Count(true));
}

TEST_F(FilterTest, CountWithoutDefaultOnAnEmptyCollectionIsMinusOne) {
  CategoriesAccess::Clear(*cats);
  EXPECT_EQ(cats->CountWithoutDefault(true), -1);
  EXPECT_EQ(cats->CountWithoutDefault(false), 0);
  EXPECT_EQ(cats->DefaultCategory(true), nullptr);
}

TEST_F(FilterTest, CountFilteredMemberBeforeAnyFilterCountsDistinctMembers) {
  // After Clear the type filter reads 0, so the counting path is taken
  // (although no item filter was applied): item 4 counts through the
  // default category, an item in no category does not.
  OutlookItemsAccess::Add(*items, u"EIDx", u"STORE", u"Inbox", u"orphan", u"IPM.Note", 0);
  EXPECT_EQ(items->Count(), 5);
  EXPECT_EQ(cats->CountFilteredMember(), 4);
  cats->SetFilter(0, -1, cmfmAll, cmmlAll);
  EXPECT_EQ(cats->CountFilteredMember(), 5);
}

TEST_F(FilterTest, TypeFilterKeepsOnlyThatType) {
  cats->SetFilter(0, 3, cmfmMemberOnly, cmmlAll);
  EXPECT_EQ(Names(cats->Enumerate()), (std::vector<std::u16string>{u"Work", u"Private", u"Extra"}));
  EXPECT_EQ(MemberIds(*Cat(u"Work"), false), (std::vector<int32_t>{3}));
}

TEST_F(FilterTest, MasterlistFilters) {
  cats->SetFilter(0, -1, cmfmAll, cmmlMasterlistOnly);
  EXPECT_EQ(Names(cats->Enumerate()),
            (std::vector<std::u16string>{u"Work", u"Private", u"Unused"}));
  cats->SetFilter(0, -1, cmfmAll, cmmlNoMasterlist);
  EXPECT_EQ(Names(cats->Enumerate()), (std::vector<std::u16string>{u"", u"Extra"}));
  EXPECT_EQ(cats->DefaultCategory(false)->ID(), 0);
  cats->SetFilter(0, -1, cmfmNoMember, cmmlMasterlistOnly);
  EXPECT_EQ(Names(cats->Enumerate()), (std::vector<std::u16string>{u"Unused"}));
  EXPECT_EQ(cats->DefaultCategory(false), nullptr);  // filtered out
  EXPECT_EQ(cats->DefaultCategory(true)->ID(), 0);
  EXPECT_EQ(cats->CountWithoutDefault(false), 1);
  EXPECT_EQ(cats->CountWithoutDefault(true), 4);
}

TEST_F(FilterTest, CountDetailsCountsTheDefaultAsNotInTheList) {
  int32_t in = -1;
  int32_t out = -1;
  cats->SetFilter(0, -1, cmfmAll, cmmlMasterlistOnly);
  cats->CountDetails(in, out);
  EXPECT_EQ(in, 3);   // Work, Private, Unused, whatever the filter shows
  EXPECT_EQ(out, 2);  // the default category and Extra
}

TEST_F(FilterTest, ItemsAddedUnderAFilterStayVisibleUntilTheNextSetFilter) {
  cats->SetFilter(2, -1, cmfmMemberOnly, cmmlAll);
  auto item1 = items->Item(ItemIndex::Key(u"1"));
  item1->CategoriesAdd(Cat(u"Unused"));  // one category more; Unused is filtered out
  EXPECT_EQ(Cat(u"Unused")->MemberCount(false), 1);
  EXPECT_EQ(cats->Item(ItemIndex::Key(Cat(u"Unused")->ID())), nullptr);
  auto added = cats->Add(u"Brand new", true);
  EXPECT_EQ(cats->Item(ItemIndex::Key(added->ID())), added);  // shown although member-less
  cats->SetFilter(2, -1, cmfmMemberOnly, cmmlAll);
  EXPECT_EQ(cats->Item(ItemIndex::Key(added->ID())), nullptr);
}

TEST_F(FilterTest, PositionalLoopFollowsTheFilter) {
  cats->SetFilter(2, -1, cmfmMemberOnly, cmmlAll);
  std::vector<std::u16string> names;
  for (int32_t i = 1; i <= cats->Count(); ++i)
    names.push_back(cats->Item(ItemIndex::Position(i))->Name());
  EXPECT_EQ(names, (std::vector<std::u16string>{u"Work", u"Private", u"Extra"}));
}

}  // namespace
}  // namespace t4
