#include "journal/ActionList.h"

#include <gtest/gtest.h>

#include <memory>

#include "model/Category.h"

namespace t4 {
namespace {

Action Membership(int32_t item, int32_t category) {
  Action a;
  a.Kind = Action::kRemoved;
  a.ItemID = item;
  a.CategoryID = category;
  return a;
}

TEST(ActionList, KeepsTheRecordingOrderAcrossBlocks) {
  // Sizes around the small first block and the block boundaries after it.
  for (size_t n :
       {size_t{0}, size_t{1}, size_t{16}, size_t{17}, size_t{1040}, size_t{1041}, size_t{5000}}) {
    SCOPED_TRACE(n);
    ActionList list;
    for (size_t i = 0; i < n; ++i) list.push_back(Membership(static_cast<int32_t>(i), 7));
    ASSERT_EQ(list.size(), n);
    EXPECT_EQ(list.empty(), n == 0);
    for (size_t i = 0; i < n; ++i) ASSERT_EQ(list[i].ItemID, static_cast<int32_t>(i));
    if (n != 0) {
      EXPECT_EQ(list.back().ItemID, static_cast<int32_t>(n - 1));
    }
  }
}

TEST(ActionList, ActionsStayInPlaceWhileTheListGrows) {
  // The replay works on an action by reference while a subscriber may
  // record more into the same step.
  ActionList list;
  for (int32_t i = 0; i < 20; ++i) list.push_back(Membership(i, 1));
  Action* early = &list[3];
  Action* late = &list[19];
  for (int32_t i = 20; i < 10000; ++i) list.push_back(Membership(i, 1));
  EXPECT_EQ(&list[3], early);
  EXPECT_EQ(&list[19], late);
  EXPECT_EQ(early->ItemID, 3);
  EXPECT_EQ(late->ItemID, 19);
}

TEST(ActionList, ReleasesTheCategoriesItsActionsHold) {
  auto category = std::make_shared<Category>();
  std::weak_ptr<Category> watch = category;
  {
    ActionList list;
    for (int32_t i = 0; i < 30; ++i) list.push_back(Membership(i, 1));
    Action edit;
    edit.Kind = Action::kPropertyChanged;
    edit.Detail = std::make_unique<Action::CategoryPart>();
    edit.Detail->Category = std::move(category);
    edit.Detail->PropertyName = u"Name";
    edit.Detail->Value = std::u16string(u"Old");
    list.push_back(std::move(edit));
    EXPECT_EQ(edit.Detail, nullptr);  // moved into the list
    ASSERT_NE(list.back().Detail, nullptr);
    EXPECT_EQ(std::get<std::u16string>(list.back().Detail->Value), u"Old");
    EXPECT_FALSE(watch.expired());
  }
  EXPECT_TRUE(watch.expired());
}

}  // namespace
}  // namespace t4
