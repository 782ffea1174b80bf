#pragma once

#include <ocidl.h>
#include <windows.h>

#include "com/ClassInfo.h"

namespace t4::com {

// IProvideClassInfo2 (and so IProvideClassInfo), used in a ComObject's
// interface list: the description of coclass `Clsid` and its default
// source interface `Source`, which WithEvents and script event binding look
// for; null for a class that raises no events.
template <const CLSID& Clsid, const IID* Source = nullptr>
class ProvideClassInfo2 : public IProvideClassInfo2 {
 public:
  using Interface = IProvideClassInfo2;

  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) noexcept override {
    return ClassInfo::TypeInfo(Clsid, info);
  }
  HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* guid) noexcept override {
    return ClassInfo::DefaultSource(Source, kind, guid);
  }
};

}  // namespace t4::com
