#pragma once

#include "platform/win32/Dispatcher.h"
#include "support/IMapiItems.h"

namespace t4::win32 {

// A folder's items collection of the MAPI library, late bound: Count and
// RawTable (the raw contents table, handed on to a table object).
class DispatchMapiItems : public IMapiItems {
 public:
  explicit DispatchMapiItems(ComPtr<IDispatch> items) : items_(std::move(items)) {}

  int32_t Count() override;
  std::shared_ptr<IMapiProp> RawTable() override;

 private:
  Dispatcher items_;
};

}  // namespace t4::win32
