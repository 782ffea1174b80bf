#pragma once

#include <ocidl.h>
#include <windows.h>

namespace t4::com {

// What IProvideClassInfo and IProvideClassInfo2 answer, for every class of
// the library (ProvideClassInfo, ProvideClassInfo2).
class ClassInfo {
 public:
  // The description of coclass `clsid` from the embedded type library.
  static HRESULT TypeInfo(REFCLSID clsid, ITypeInfo** info) noexcept;
  // GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID): `source`, the default event
  // interface WithEvents and script event binding look for; E_INVALIDARG
  // for any other kind and for a class that raises no events (null).
  static HRESULT DefaultSource(const IID* source, DWORD kind, GUID* guid) noexcept;
};

}  // namespace t4::com
