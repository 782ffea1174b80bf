#include "platform/common/DefaultPorts.h"
#include "support/IMessagePump.h"

namespace t4 {

namespace {

// A native host on POSIX has no window message queue the library could run;
// hosts with an event loop of their own drive it from the Progress event.
class NoMessagePump : public IMessagePump {
 public:
  void DoEvents() override {}
};

}  // namespace

std::shared_ptr<IMessagePump> CreatePlatformMessagePump() {
  return std::make_shared<NoMessagePump>();
}

}  // namespace t4
