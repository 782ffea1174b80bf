// The benchmarks run on the platform's own ports wherever one puts in none.
#include "platform/posix/PosixPorts.h"

namespace {

const bool kDefaultPorts = (t4::posix::UseDefaultPorts(), true);

}  // namespace
