#pragma once

#include <oaidl.h>

#include <functional>

#include "platform/win32/ComPtr.h"
#include "support/IClientApp.h"

namespace t4::win32 {

// Outlook's Application object behind its IDispatch: Version by late
// binding, Quit (DISPID 61447) through one of its application event
// connection points (ApplicationEvents, ApplicationEvents_11, or the first
// one it lists).
class Win32ClientApp : public IClientApp {
 public:
  // Works on `outlook` (not null).
  explicit Win32ClientApp(ComPtr<IDispatch> outlook);
  ~Win32ClientApp() override;

  std::u16string Version() override;
  // Error 459 when the object offers no connection point.
  void AdviseQuit(std::function<void()> onQuit) override;
  void UnadviseQuit() override;
  std::shared_ptr<IClientObject> GetItemFromID(const std::u16string& entryId,
                                               const std::u16string& storeId) override;

  // The object itself, for late-bound calls that pass it on (no new
  // reference).
  IDispatch* Object() const { return outlook_.Get(); }

 private:
  ComPtr<IDispatch> outlook_;
  struct Subscription;
  Subscription* subscription_ = nullptr;
};

}  // namespace t4::win32
