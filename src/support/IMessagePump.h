#pragma once

namespace t4 {

// The thread's message queue. Long reads let pending window messages run
// once per item, so that a host's user interface stays responsive.
class IMessagePump {
 public:
  virtual ~IMessagePump() = default;
  // Runs the messages waiting now, then returns (Visual Basic's DoEvents).
  virtual void DoEvents() = 0;
};

}  // namespace t4
