#pragma once

#include "com/ComObject.h"
#include "com/ErrorBoundary.h"
#include "com/Tandrel4_h.h"
#include "com/Variants.h"

namespace t4::com {

// _IChild for a wrapper whose core is a t4::IChild: each method passes
// straight on to the core (Derived::Core()). Used in a ComObject's interface
// list in place of DispatchImpl<_IChild>.
template <class Derived>
class ChildImpl : public DispatchImpl<_IChild> {
 public:
  HRESULT STDMETHODCALLTYPE Init(LONG lParentPtr, VARIANT sKey) noexcept override {
    return Boundary(IID__IChild, [&] { ChildCore()->Init(lParentPtr, OptionalText(sKey, u"")); });
  }
  HRESULT STDMETHODCALLTYPE get_Key(BSTR* sKey) noexcept override {
    if (sKey == nullptr) return E_POINTER;
    *sKey = nullptr;
    return Boundary(IID__IChild, [&] { *sKey = ToBstr(ChildCore()->Key()); });
  }
  HRESULT STDMETHODCALLTYPE ResetParentPtr() noexcept override {
    return Boundary(IID__IChild, [&] { ChildCore()->ResetParentPtr(); });
  }

 private:
  decltype(auto) ChildCore() const noexcept { return static_cast<const Derived*>(this)->Core(); }
};

}  // namespace t4::com
