#include "model/internal/CategoryIdList.h"

#include <gtest/gtest.h>

#include <vector>

namespace t4 {
namespace {

std::vector<int32_t> V(const CategoryIdList& l) {
  return std::vector<int32_t>(l.begin(), l.end());
}

TEST(CategoryIdList, GrowsPastItsInlineRoomKeepingOrder) {
  CategoryIdList l;
  EXPECT_TRUE(l.empty());
  for (int32_t i = 1; i <= 10; ++i) l.push_back(i * 10);
  EXPECT_EQ(l.size(), 10u);
  EXPECT_EQ(l[0], 10);
  EXPECT_EQ(l[9], 100);
  EXPECT_TRUE(l.Contains(70));
  EXPECT_EQ(l.IndexOf(70), 6u);
  EXPECT_EQ(l.IndexOf(71), 10u);
  l.EraseAt(0);
  l.EraseAt(8);
  EXPECT_EQ(V(l), (std::vector<int32_t>{20, 30, 40, 50, 60, 70, 80, 90}));
}

TEST(CategoryIdList, CopiesAreIndependent) {
  CategoryIdList small;
  small.push_back(1);
  CategoryIdList big;
  for (int32_t i = 0; i < 6; ++i) big.push_back(i);
  CategoryIdList a = big;
  a.EraseAt(0);
  EXPECT_EQ(big.size(), 6u);
  a = small;
  EXPECT_EQ(V(a), std::vector<int32_t>{1});
  CategoryIdList b = small;
  b = big;
  EXPECT_EQ(V(b), V(big));
  b = b;
  EXPECT_EQ(b.size(), 6u);
}

}  // namespace
}  // namespace t4
