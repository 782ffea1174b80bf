#pragma once

#include <ocidl.h>
#include <windows.h>

#include "com/ClassInfo.h"

namespace t4::com {

// IProvideClassInfo for a class that raises no events, used in a
// ComObject's interface list: the description of coclass `Clsid`.
template <const CLSID& Clsid>
class ProvideClassInfo : public IProvideClassInfo {
 public:
  using Interface = IProvideClassInfo;

  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) noexcept override {
    return ClassInfo::TypeInfo(Clsid, info);
  }
};

}  // namespace t4::com
