#include "platform/posix/PosixClock.h"
#include "platform/common/DefaultPorts.h"

#include <time.h>

#include <ctime>

namespace t4 {

namespace posix {

namespace {

constexpr double kUnixEpochAsOleDate = 25569.0;  // 1970-01-01 in days since 1899-12-30

struct LocalNow {
  timespec instant{};
  std::tm fields{};
};

LocalNow Read() {
  LocalNow now;
  ::clock_gettime(CLOCK_REALTIME, &now.instant);
  ::localtime_r(&now.instant.tv_sec, &now.fields);
  return now;
}

}  // namespace

double PosixClock::Now() {
  const LocalNow now = Read();
  // The wall-clock seconds of the local time zone, counted from 1970.
  const double local = static_cast<double>(now.instant.tv_sec) +
                       static_cast<double>(now.fields.tm_gmtoff) +
                       static_cast<double>(now.instant.tv_nsec) / 1e9;
  return local / 86400.0 + kUnixEpochAsOleDate;
}

double PosixClock::Timer() {
  const LocalNow now = Read();
  return now.fields.tm_hour * 3600.0 + now.fields.tm_min * 60.0 + now.fields.tm_sec +
         static_cast<double>(now.instant.tv_nsec) / 1e9;
}

}  // namespace posix

std::shared_ptr<IClock> CreatePlatformClock() {
  return std::make_shared<posix::PosixClock>();
}

}  // namespace t4
