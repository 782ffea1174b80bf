// Wrap: one COM wrapper per core object while a client holds it.
#include "com/Wrap.h"

#include <gtest/gtest.h>

#include <memory>

#include "com/IdentityMap.h"
#include "model/Category.h"
#include "platform/win32/ComPtr.h"

namespace t4 {
namespace {

using win32::ComPtr;

TEST(Wrap, OneCoreObjectHasOneWrapperWhileItIsHeld) {
  const auto core = std::make_shared<Category>();
  const std::size_t before = com::IdentityMap::Count();
  auto first = ComPtr<_Category>::Attach(com::Wrap(core));
  auto second = ComPtr<_Category>::Attach(com::Wrap(core));
  ASSERT_TRUE(first);
  EXPECT_EQ(first.Get(), second.Get());
  EXPECT_EQ(com::IdentityMap::Count(), before + 1);
  second.Reset();
  first.Reset();
  EXPECT_EQ(com::IdentityMap::Count(), before);
}

TEST(Wrap, NoCoreObjectIsNothing) {
  EXPECT_EQ(com::Wrap(std::shared_ptr<Category>()), nullptr);
}

}  // namespace
}  // namespace t4
