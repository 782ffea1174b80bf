#pragma once

#include "support/IClock.h"

namespace t4::posix {

// The system clock in the C library's local time (TZ).
class PosixClock : public IClock {
 public:
  double Now() override;
  double Timer() override;
};

}  // namespace t4::posix
