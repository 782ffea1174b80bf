#pragma once

#include "platform/win32/Dispatcher.h"
#include "support/IMapiMessage.h"

namespace t4::win32 {

// A message object of the MAPI library, late bound: Categories (get and
// put, the names joined by ";") and Save.
class DispatchMapiMessage : public IMapiMessage {
 public:
  explicit DispatchMapiMessage(ComPtr<IDispatch> message) : message_(std::move(message)) {}

  std::u16string Categories() override;
  void SetCategories(const std::u16string& categories) override;
  void Save() override;

 private:
  Dispatcher message_;
};

}  // namespace t4::win32
