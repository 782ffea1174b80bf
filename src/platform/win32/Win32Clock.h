#pragma once

#include "support/IClock.h"

namespace t4::win32 {

// The system clock in local time (GetLocalTime), to the millisecond.
class Win32Clock : public IClock {
 public:
  double Now() override;
  double Timer() override;
};

}  // namespace t4::win32
