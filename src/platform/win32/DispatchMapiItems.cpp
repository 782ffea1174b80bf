#include "platform/win32/DispatchMapiItems.h"

#include "platform/win32/DispatchMapiProp.h"
#include "support/RunTimeError.h"

namespace t4::win32 {

int32_t DispatchMapiItems::Count() {
  return items_.Get(u"Count").ToLong();
}

std::shared_ptr<IMapiProp> DispatchMapiItems::RawTable() {
  const Variant raw = items_.Get(u"RawTable");
  if (raw.IsEmpty() || raw.IsNothing()) {
    throw RunTimeError::Make(RunTimeError::kObjectVariableNotSet);
  }
  return std::make_shared<DispatchMapiProp>(raw.Raw());
}

}  // namespace t4::win32
