// Linked into the test programs, benchmarks and fuzz targets: they run on the
// platform's own ports wherever they put in none, as a host does after
// calling platform::UseDefaultPorts at start.
#include "platform/common/DefaultPorts.h"

namespace {

const bool kDefaultPorts = (t4::platform::UseDefaultPorts(), true);

}  // namespace
