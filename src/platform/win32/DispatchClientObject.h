#pragma once

#include "platform/win32/DispatchPtr.h"
#include "support/IClientObject.h"

namespace t4::win32 {

// An Outlook item behind its IDispatch, handed on to the host unchanged
// (OutlookItem.GetOutlookItem).
class DispatchClientObject : public IClientObject {
 public:
  explicit DispatchClientObject(DispatchPtr object) : object_(std::move(object)) {}

  // The object, without a new reference.
  IDispatch* Object() const noexcept { return object_.Get(); }

 private:
  DispatchPtr object_;
};

}  // namespace t4::win32
