#include "support/ProductPaths.h"

#include <gtest/gtest.h>

namespace t4 {
namespace {

TEST(ProductPaths, RegistryKey) {
  EXPECT_EQ(ProductPaths::RegistryKey(), u"Software\\Quorvane\\Kolvane\\Settings\\");
}

}  // namespace
}  // namespace t4
