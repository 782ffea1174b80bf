// CoreOf: the core category behind a _Category a host hands back.
#include "com/CoreOf.h"

#include <gtest/gtest.h>

#include <memory>

#include "ErrorNumber.h"
#include "ProbeObject.h"
#include "com/Wrap.h"
#include "model/Category.h"
#include "platform/win32/ComPtr.h"

namespace t4 {
namespace {

using win32::ComPtr;

TEST(CoreOf, FindsTheCoreBehindTheLibrarysOwnCategory) {
  const auto core = std::make_shared<Category>();
  const auto wrapper = ComPtr<_Category>::Attach(com::Wrap(core));
  EXPECT_EQ(com::CoreOf(wrapper.Get()), core);
}

TEST(CoreOf, NothingIsNoCategory) {
  EXPECT_EQ(com::CoreOf(nullptr), nullptr);
}

TEST(CoreOf, AnObjectOfAnotherClassIsATypeMismatch) {
  // An object that only claims to be a _Category.
  auto* other = new test::ProbeObject<>();
  const auto held = ComPtr<IDispatch>::Attach(static_cast<com::DispatchImpl<_ILanguage>*>(other));
  EXPECT_EQ(test::NumberOf([&] { com::CoreOf(reinterpret_cast<_Category*>(held.Get())); }), 13);
}

}  // namespace
}  // namespace t4
