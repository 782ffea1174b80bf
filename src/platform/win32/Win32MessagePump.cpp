#include <windows.h>

#include "platform/common/DefaultPorts.h"
#include "support/IMessagePump.h"

namespace t4 {

namespace {

// One DoEvents: the messages waiting in the thread's queue are
// dispatched, then control returns. The count is bounded so that a window
// that keeps posting to itself cannot hold the reader forever.
class Win32MessagePump : public IMessagePump {
 public:
  void DoEvents() override {
    MSG msg;
    for (int i = 0; i < kMaxMessages && ::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE); ++i) {
      if (msg.message == WM_QUIT) {
        // The quit request belongs to the host's own message loop.
        ::PostQuitMessage(static_cast<int>(msg.wParam));
        break;
      }
      ::TranslateMessage(&msg);
      ::DispatchMessageW(&msg);
    }
  }

 private:
  static constexpr int kMaxMessages = 1000;
};

}  // namespace

std::shared_ptr<IMessagePump> CreatePlatformMessagePump() {
  return std::make_shared<Win32MessagePump>();
}

}  // namespace t4
