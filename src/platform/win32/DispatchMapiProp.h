#pragma once

#include "platform/win32/Variant.h"
#include "support/IMapiProp.h"

namespace t4::win32 {

// A raw MAPI object of the MAPI library (a folder's or store's MAPIOBJECT,
// the RawTable of a folder's items) kept as the value the library handed
// out: usually VT_UNKNOWN, since raw MAPI interfaces have no IDispatch. It is
// only ever passed back to another member of the library, as it came.
class DispatchMapiProp : public IMapiProp {
 public:
  // Keeps a copy of `value` (references resolved).
  explicit DispatchMapiProp(const VARIANT& value) : value_(Variant::Copy(value)) {}

  // A new copy of the value, to pass as an argument.
  Variant Value() const { return Variant::Copy(value_.Raw()); }

  // The value held by `prop`; raises 13 for a raw object that did not come
  // from the late-bound MAPI adapters.
  static Variant ValueOf(IMapiProp& prop);

 private:
  Variant value_;
};

}  // namespace t4::win32
