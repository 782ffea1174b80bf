#include "support/HandleTable.h"

#include <gtest/gtest.h>

#include <string>

namespace t4 {
namespace {

struct Parent {
  int value = 7;
};
struct Other {};

TEST(HandleTable, SameObjectSameHandle) {
  auto p = std::make_shared<Parent>();
  const int32_t h = HandleTable::HandleOf(p);
  EXPECT_NE(h, 0);
  EXPECT_EQ(HandleTable::HandleOf(p), h);
  EXPECT_EQ(HandleTable::Resolve<Parent>(h), p);
}

TEST(HandleTable, HandleDoesNotKeepTheObjectAlive) {
  auto p = std::make_shared<Parent>();
  const int32_t h = HandleTable::HandleOf(p);
  std::weak_ptr<Parent> watch = p;
  p.reset();
  EXPECT_TRUE(watch.expired());
  EXPECT_EQ(HandleTable::Resolve<Parent>(h), nullptr);
}

TEST(HandleTable, UnknownWrongTypeAndForgottenHandlesResolveToNothing) {
  auto p = std::make_shared<Parent>();
  const int32_t h = HandleTable::HandleOf(p);
  EXPECT_EQ(HandleTable::Resolve<Parent>(0), nullptr);
  EXPECT_EQ(HandleTable::Resolve<Parent>(12345), nullptr);
  EXPECT_EQ(HandleTable::Resolve<Parent>(-1), nullptr);
  EXPECT_EQ(HandleTable::Resolve<Other>(h), nullptr);
  HandleTable::Forget(h);
  EXPECT_EQ(HandleTable::Resolve<Parent>(h), nullptr);
  EXPECT_NE(HandleTable::HandleOf(p), h);  // a new handle, never the old one
}

TEST(HandleTable, HandlesAreNotReusedForNewObjects) {
  int32_t first = 0;
  {
    auto p = std::make_shared<Parent>();
    first = HandleTable::HandleOf(p);
  }
  auto q = std::make_shared<Parent>();  // may well get the same address
  const int32_t second = HandleTable::HandleOf(q);
  EXPECT_NE(first, second);
  EXPECT_EQ(HandleTable::Resolve<Parent>(first), nullptr);
  EXPECT_EQ(HandleTable::Resolve<Parent>(second), q);
}

TEST(HandleTable, NullObjectHasHandleZero) {
  std::shared_ptr<Parent> none;
  EXPECT_EQ(HandleTable::HandleOf(none), 0);
}

TEST(HandleTable, DeadEntriesAreSweptAway) {
  const size_t before = HandleTable::Size();
  for (int i = 0; i < 1000; ++i) {
    auto p = std::make_shared<Parent>();
    HandleTable::HandleOf(p);
  }
  EXPECT_EQ(HandleTable::Size(), before);
}

}  // namespace
}  // namespace t4
