// The test program runs on the platform's own ports wherever a test puts in none.
#include "platform/posix/PosixPorts.h"

namespace {

const bool kDefaultPorts = (t4::posix::UseDefaultPorts(), true);

}  // namespace
