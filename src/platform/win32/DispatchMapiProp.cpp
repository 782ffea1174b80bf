#include "platform/win32/DispatchMapiProp.h"

#include "support/RunTimeError.h"

namespace t4::win32 {

Variant DispatchMapiProp::ValueOf(IMapiProp& prop) {
  auto* own = dynamic_cast<DispatchMapiProp*>(&prop);
  if (own == nullptr) throw RunTimeError::Make(RunTimeError::kTypeMismatch);
  return own->Value();
}

}  // namespace t4::win32
