#pragma once

#include "platform/win32/ComPtr.h"
#include "support/IClientObject.h"

namespace t4::win32 {

// An Outlook item behind its IDispatch, handed on to the host unchanged
// (OutlookItem.GetOutlookItem).
class DispatchClientObject : public IClientObject {
 public:
  explicit DispatchClientObject(ComPtr<IDispatch> object) : object_(std::move(object)) {}

  // The object, without a new reference.
  IDispatch* Object() const noexcept { return object_.Get(); }

 private:
  ComPtr<IDispatch> object_;
};

}  // namespace t4::win32
