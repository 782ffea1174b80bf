#include "platform/win32/Win32Clock.h"
#include "platform/common/DefaultPorts.h"

#include <windows.h>
// After windows.h, which it needs.
#include <oleauto.h>

namespace t4 {

namespace win32 {

double Win32Clock::Now() {
  SYSTEMTIME now{};
  ::GetLocalTime(&now);
  const WORD ms = now.wMilliseconds;
  now.wMilliseconds = 0;
  double date = 0;
  ::SystemTimeToVariantTime(&now, &date);
  return date + ms / 86400000.0;
}

double Win32Clock::Timer() {
  SYSTEMTIME now{};
  ::GetLocalTime(&now);
  return now.wHour * 3600.0 + now.wMinute * 60.0 + now.wSecond + now.wMilliseconds / 1000.0;
}

}  // namespace win32

std::shared_ptr<IClock> CreatePlatformClock() {
  return std::make_shared<win32::Win32Clock>();
}

}  // namespace t4
