#pragma once

#include <ocidl.h>
#include <windows.h>

namespace t4::com {

// IProvideClassInfo2 answers: the coclass description from the type
// library and, for classes that raise events, the default source interface
// (what WithEvents and script event binding look for).
HRESULT ClassTypeInfo(REFCLSID clsid, ITypeInfo** info) noexcept;
HRESULT DefaultSourceGuid(const IID* source, DWORD kind, GUID* guid) noexcept;

}  // namespace t4::com
