#include <gtest/gtest.h>

#include "SessionFakes.h"
#include "support/CategoryNumbering.h"

namespace t4::test {
namespace {

using Log = std::vector<std::string>;
using Names = std::vector<std::u16string>;

TEST(StoredCategoryList, ReadsEveryCategoryAsEntryGroups) {
  auto store = std::make_shared<MemoryCategoryStore>();
  StoredCategoryList list(store);
  EXPECT_EQ(list.ReadCategories(), u"");
  store->entries = {{u"{A}", u"Red", 0, 1}, {u"{B}", u"Gr\u00fcn", -1, 0}};
  EXPECT_EQ(list.ReadCategories(), u"{A};Red;0;1;{B};Gr\u00fcn;-1;0");
  EXPECT_EQ(list.Format(), u"");
}

TEST(StoredCategoryList, WriteCreatesUpdatesDeletesAndAnswersPairs) {
  auto store = std::make_shared<MemoryCategoryStore>();
  store->entries = {{u"{A}", u"Red", 0, 0}, {u"{B}", u"Blue", 7, 0}};
  store->lastId = 10;
  StoredCategoryList list(store);
  std::u16string text = u"{A};Crimson;1;2;;New;3;0;{B};;;";
  list.WriteCategories(text);
  EXPECT_EQ(text, u"{A};Crimson;{11};New");
  EXPECT_EQ(store->log, (Log{"Update {A}", "Add New", "Remove {B}"}));
  ASSERT_EQ(store->entries.size(), 2u);
  EXPECT_EQ(store->entries[0].name, u"Crimson");
  EXPECT_EQ(store->entries[0].color, 1);
  EXPECT_EQ(store->entries[0].shortCut, 2);
  EXPECT_EQ(store->entries[1].color, 3);
  EXPECT_EQ(store->commits, 1);
}

TEST(StoredCategoryList, GroupWithoutIdentifierUpdatesTheCategoryOfThatName) {
  auto store = std::make_shared<MemoryCategoryStore>();
  store->entries = {{u"{A}", u"Work", 4, 1}};
  StoredCategoryList list(store);
  std::u16string text = u";WORK;-2;-2";
  list.WriteCategories(text);
  EXPECT_EQ(text, u"{A};WORK");
  EXPECT_EQ(store->log, (Log{"Update {A}"}));
  // -2 leaves colour and shortcut as they were.
  EXPECT_EQ(store->entries[0].color, 4);
  EXPECT_EQ(store->entries[0].shortCut, 1);
}

TEST(StoredCategoryList, NewCategoryWithoutColourGetsNone) {
  auto store = std::make_shared<MemoryCategoryStore>();
  StoredCategoryList list(store);
  std::u16string text = u";Plain;-2;-2;;Short";
  list.WriteCategories(text);
  ASSERT_EQ(store->entries.size(), 2u);
  EXPECT_EQ(store->entries[0].color, -1);
  EXPECT_EQ(store->entries[0].shortCut, 0);
  EXPECT_EQ(store->entries[1].color, -1);  // a group cut short
  EXPECT_EQ(text, u"{1};Plain;{2};Short");
}

TEST(StoredCategoryList, DeletingAnUnknownIdentifierIsIgnored) {
  auto store = std::make_shared<MemoryCategoryStore>();
  store->entries = {{u"{A}", u"Red", 0, 0}};
  StoredCategoryList list(store);
  std::u16string text = u"{Z};;;;;;;";
  list.WriteCategories(text);
  EXPECT_EQ(text, u"");
  EXPECT_TRUE(store->log.empty());
  EXPECT_EQ(store->entries.size(), 1u);
}

TEST(StoredCategoryRules, RenameTouchesConditionsAndActionsAnyLetterCase) {
  auto store = std::make_shared<MemoryRuleStore>();
  store->rules = {{{u"Work", u"Home"}, {}}, {{}, {u"WORK"}}, {{u"Other"}, {u"Else"}}};
  StoredCategoryRules rules(store);
  EXPECT_FALSE(rules.Changed());
  std::u16string oldName = u"work";
  std::u16string newName = u"Job";
  rules.RenameCategory(oldName, newName);
  EXPECT_TRUE(rules.Changed());
  EXPECT_EQ(store->rules[0].first, (Names{u"Job", u"Home"}));
  EXPECT_EQ(store->rules[1].second, (Names{u"Job"}));
  EXPECT_EQ(store->rules[2].first, (Names{u"Other"}));
  rules.Save();
  EXPECT_EQ(store->saves, 1);
  EXPECT_FALSE(rules.Changed());
}

TEST(StoredCategoryRules, RenameOfANameNoRuleHoldsChangesNothing) {
  auto store = std::make_shared<MemoryRuleStore>();
  store->rules = {{{u"Home"}, {u"Home"}}};
  StoredCategoryRules rules(store);
  std::u16string oldName = u"Work";
  std::u16string newName = u"Job";
  rules.RenameCategory(oldName, newName);
  EXPECT_FALSE(rules.Changed());
}

TEST(CategoryNumbering, LibraryAndOutlookNumbers) {
  struct Case {
    int32_t library;
    int32_t client;
  };
  const Case colours[] = {{-1, 0}, {0, 1}, {7, 8}, {24, 25}};
  for (const Case& c : colours) {
    SCOPED_TRACE(c.library);
    EXPECT_EQ(CategoryNumbering::ColorToClient(c.library), c.client);
    EXPECT_EQ(CategoryNumbering::ColorFromClient(c.client), c.library);
  }
  EXPECT_EQ(CategoryNumbering::ColorToClient(-2), 0);
  EXPECT_EQ(CategoryNumbering::ColorFromClient(-1), -1);  // Outlook 2007's own "none"
  EXPECT_EQ(CategoryNumbering::ColorFromClient(26), -1);
  const Case keys[] = {{0, 0}, {1, 2}, {11, 12}};
  for (const Case& c : keys) {
    SCOPED_TRACE(c.library);
    EXPECT_EQ(CategoryNumbering::ShortCutToClient(c.library), c.client);
    EXPECT_EQ(CategoryNumbering::ShortCutFromClient(c.client), c.library);
  }
  EXPECT_EQ(CategoryNumbering::ShortCutToClient(-2), 0);
  EXPECT_EQ(CategoryNumbering::ShortCutFromClient(1), 0);
}

}  // namespace
}  // namespace t4::test
