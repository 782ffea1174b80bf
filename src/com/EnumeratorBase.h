#pragma once

#include <objbase.h>
#include <windows.h>

#include <cstddef>

#include "com/ComModule.h"

namespace t4::com {

// What the library's IEnumXxx objects have in common: IUnknown (IUnknown and
// the one enumerator interface, a counted reference that deletes the object
// at 0), the position and the Skip and Reset that only move it. `Derived`
// supplies Size(), the number of elements it walks, and Next and Clone.
// Each live enumerator counts as an object of the module.
template <class Derived, class Interface>
class EnumeratorBase : public Interface {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) noexcept override {
    if (object == nullptr) return E_POINTER;
    if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, __uuidof(Interface))) {
      AddRef();
      *object = static_cast<Interface*>(this);
      return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() noexcept override {
    return static_cast<ULONG>(::InterlockedIncrement(&refs_));
  }
  ULONG STDMETHODCALLTYPE Release() noexcept override {
    const ULONG n = static_cast<ULONG>(::InterlockedDecrement(&refs_));
    if (n == 0) delete static_cast<Derived*>(this);
    return n;
  }

  HRESULT STDMETHODCALLTYPE Skip(ULONG count) noexcept override {
    const size_t size = static_cast<const Derived*>(this)->Size();
    const size_t left = size - position_;
    if (count > left) {
      position_ = size;
      return S_FALSE;
    }
    position_ += count;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Reset() noexcept override {
    position_ = 0;
    return S_OK;
  }

 protected:
  explicit EnumeratorBase(size_t position) noexcept : position_(position) {
    ComModule::ObjectCreated();
  }
  ~EnumeratorBase() { ComModule::ObjectDestroyed(); }
  EnumeratorBase(const EnumeratorBase&) = delete;
  EnumeratorBase& operator=(const EnumeratorBase&) = delete;

  size_t position_;

 private:
  LONG refs_ = 1;
};

}  // namespace t4::com
