#include "platform/posix/PosixClock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ctime>
#include <optional>

#include "platform/posix/MaildirUtils.h"
#include "platform/posix/TempConfigDirs.h"

namespace t4::posix {
namespace {

// 2024-01-15 and 2024-07-15 as OLE dates.
constexpr double kWinterDay = 45306.0;
constexpr double kSummerDay = 45488.0;

// Central European time by a POSIX rule, which needs no time zone files.
class CentralEuropeanTime {
 public:
  CentralEuropeanTime() {
    dirs.emplace();
    dirs->SetEnv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");
    ::tzset();
  }
  ~CentralEuropeanTime() {
    dirs.reset();  // TZ back as it was
    ::tzset();
  }
  std::optional<test::TempConfigDirs> dirs;
};

TEST(MaildirUtils, HrLocalToGMTAppliesTheTimeZoneOfThatDate) {
  struct Case {
    const char* what;
    double local;
    double universal;
  };
  const Case cases[] = {
      {"winter: one hour", kWinterDay + 0.5, kWinterDay + 11.0 / 24},
      {"summer: two hours", kSummerDay + 0.5, kSummerDay + 10.0 / 24},
      {"over midnight", kWinterDay + 0.5 / 24, kWinterDay - 0.5 / 24},
      {"milliseconds stay", kWinterDay + 0.5 + 0.042 / 86400,
       kWinterDay + 11.0 / 24 + 0.042 / 86400},
  };
  CentralEuropeanTime zone;
  MaildirUtils utils;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_NEAR(utils.HrLocalToGMT(c.local), c.universal, 1e-9);
  }
}

TEST(PosixClock, NowAndTimerTellTheSameLocalTime) {
  CentralEuropeanTime zone;
  PosixClock clock;
  const double timer = clock.Timer();
  const double now = clock.Now();
  const double timeOfDay = (now - std::floor(now)) * 86400;
  // The two reads lie a moment apart; around midnight the timer starts anew.
  const double apart = std::fabs(timeOfDay - timer);
  EXPECT_TRUE(apart < 5 || apart > 86395) << timer << " " << timeOfDay;
  EXPECT_GE(timer, 0);
  EXPECT_LT(timer, 86400);
  EXPECT_GT(now, 45000);  // after 2023
}

}  // namespace
}  // namespace t4::posix
