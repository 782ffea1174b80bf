// The test program runs on the platform's own ports wherever a test puts in none.
#include "platform/win32/Win32Ports.h"

namespace {

const bool kDefaultPorts = (t4::win32::UseDefaultPorts(), true);

}  // namespace
