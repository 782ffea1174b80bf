// Each fuzz target runs on the platform's own ports, as a native host does.
#include "platform/posix/PosixPorts.h"

namespace {

const bool kDefaultPorts = (t4::posix::UseDefaultPorts(), true);

}  // namespace
