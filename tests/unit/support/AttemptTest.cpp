#include "support/Attempt.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "support/Error.h"

namespace t4 {
namespace {

TEST(Attempt, TrueWhenTheStepRunsThrough) {
  int ran = 0;
  EXPECT_TRUE(Attempt([&] { ++ran; }));
  EXPECT_EQ(ran, 1);
}

TEST(Attempt, SwallowsWhatTheStepThrowsAndSaysSo) {
  struct Case {
    const char* what;
    void (*step)();
  };
  const Case cases[] = {
      {"library error", [] { throw Error(5, u"invalid call"); }},
      {"standard exception", [] { throw std::runtime_error("boom"); }},
      {"anything else", [] { throw 42; }},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_FALSE(Attempt(c.step));
  }
}

TEST(Attempt, EveryStepOfASequenceRunsWhateverFailedBefore) {
  int ran = 0;
  bool failed = false;
  failed |= !Attempt([&] {
    ++ran;
    throw std::runtime_error("first");
  });
  failed |= !Attempt([&] { ++ran; });
  EXPECT_EQ(ran, 2);
  EXPECT_TRUE(failed);
}

}  // namespace
}  // namespace t4
