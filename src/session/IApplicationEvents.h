#pragma once

#include <cstdint>

namespace t4 {

// A subscriber to the events of an Application. Events are synchronous
// calls on the host's thread; a subscriber may call back into the library.
// The COM connection point is one kind of subscriber.
class IApplicationEvents {
 public:
  virtual ~IApplicationEvents() = default;
  // Once per item ReadItems takes in: `value` of `max` rows of the current
  // folder. `cancel` is offered but the reader does not consult it.
  virtual void Progress(int32_t value, int32_t max, bool& cancel) = 0;
};

}  // namespace t4
