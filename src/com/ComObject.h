#pragma once

#include <oaidl.h>
#include <ocidl.h>
#include <windows.h>

#include <atomic>
#include <type_traits>

#include "com/ComModule.h"
#include "com/IdentityMap.h"

namespace t4::com {

// IDispatch of one dual interface, answered from the type library: names
// and dispatch ids come from it and ITypeInfo::Invoke calls the vtable
// method, doing the argument coercion, optional arguments and by-reference
// handling that OLE Automation defines. An object that implements several
// dual interfaces (_Application and _ILanguage) derives from one
// DispatchImpl per interface, so each vtable answers with its own names.
class DispatchSupport {
 public:
  static HRESULT GetTypeInfoCount(UINT* count) noexcept;
  static HRESULT GetTypeInfo(REFIID itf, UINT index, ITypeInfo** info) noexcept;
  static HRESULT GetIDsOfNames(REFIID itf, REFIID riid, LPOLESTR* names, UINT count,
                               DISPID* ids) noexcept;
  static HRESULT Invoke(REFIID itf, void* object, DISPID id, REFIID riid, WORD flags,
                        DISPPARAMS* params, VARIANT* result, EXCEPINFO* excep,
                        UINT* argErr) noexcept;
};

template <class Itf>
class DispatchImpl : public Itf {
 public:
  using Interface = Itf;

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) noexcept override {
    return DispatchSupport::GetTypeInfoCount(count);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) noexcept override {
    return DispatchSupport::GetTypeInfo(__uuidof(Itf), index, info);
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID riid, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) noexcept override {
    return DispatchSupport::GetIDsOfNames(__uuidof(Itf), riid, names, count, ids);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID riid, LCID, WORD flags, DISPPARAMS* params,
                                   VARIANT* result, EXCEPINFO* excep,
                                   UINT* argErr) noexcept override {
    return DispatchSupport::Invoke(__uuidof(Itf), static_cast<Itf*>(this), id, riid, flags, params,
                                   result, excep, argErr);
  }
};

namespace detail {

// The interface a base of ComObject stands for: the base itself, or, for an
// implementation of one (DispatchImpl, ChildImpl, EventSource,
// ProvideClassInfo, ...), the interface it names as `Interface`.
template <class B, class = void>
struct InterfaceOf {
  using type = B;
};
template <class B>
struct InterfaceOf<B, std::void_t<typename B::Interface>> {
  using type = typename B::Interface;
};

// The dual interfaces, whose methods report errors through IErrorInfo.
template <class B>
constexpr bool kIsDual = std::is_base_of_v<IDispatch, typename InterfaceOf<B>::type>;

// IProvideClassInfo2 also answers for its base IProvideClassInfo.
template <class I>
bool Answers(REFIID riid) noexcept {
  if (IsEqualIID(riid, __uuidof(I))) return true;
  if constexpr (std::is_base_of_v<IProvideClassInfo, I> && !std::is_same_v<IProvideClassInfo, I>) {
    return IsEqualIID(riid, IID_IProvideClassInfo);
  }
  return false;
}

}  // namespace detail

// IUnknown and ISupportErrorInfo for every public class. `First` and `Rest`
// are the interfaces the object implements, or the shared implementations
// of them (DispatchImpl, ChildImpl, EventSource, ProvideClassInfo,
// ProvideClassInfo2); `First` is the default interface that IDispatch and
// IUnknown answer with.
// Every object counts towards DllCanUnloadNow while it lives. Release
// deletes the object as `Derived`.
template <class Derived, class First, class... Rest>
class ComObject : public First, public Rest..., public ISupportErrorInfo {
 public:
  ComObject() noexcept { ComModule::ObjectCreated(); }
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

  // The object's identity: the IUnknown every QueryInterface for IUnknown
  // returns.
  IUnknown* Identity() noexcept {
    return static_cast<typename detail::InterfaceOf<First>::type*>(static_cast<First*>(this));
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) noexcept override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    IUnknown* found = nullptr;
    if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IDispatch)) {
      found = Identity();
    } else if (IsEqualIID(riid, IID_ISupportErrorInfo)) {
      found = static_cast<ISupportErrorInfo*>(this);
    } else {
      found = Match<First>(riid);
      ((found = found != nullptr ? found : Match<Rest>(riid)), ...);
    }
    if (found == nullptr) return E_NOINTERFACE;
    found->AddRef();
    *object = found;
    return S_OK;
  }

  ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++refs_; }

  ULONG STDMETHODCALLTYPE Release() noexcept override {
    const ULONG n = identityKey_ != nullptr ? IdentityMap::Release(identityKey_, refs_) : --refs_;
    if (n == 0) delete static_cast<Derived*>(this);
    return n;
  }

  // Every dual interface of the object reports errors through IErrorInfo.
  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID riid) noexcept override {
    bool supported = SupportsErrorInfo<First>(riid);
    ((supported = supported || SupportsErrorInfo<Rest>(riid)), ...);
    return supported ? S_OK : S_FALSE;
  }

  // Makes this wrapper the one the identity map hands out for `core`. Only
  // for wrappers created through IdentityMap::FindOrCreate (which inserts).
  void BindIdentity(const void* core) noexcept { identityKey_ = core; }

 protected:
  ~ComObject() { ComModule::ObjectDestroyed(); }

 private:
  template <class B>
  IUnknown* Match(REFIID riid) noexcept {
    using I = typename detail::InterfaceOf<B>::type;
    if (!detail::Answers<I>(riid)) return nullptr;
    return static_cast<I*>(static_cast<B*>(this));
  }

  template <class B>
  static bool SupportsErrorInfo(REFIID riid) noexcept {
    if constexpr (detail::kIsDual<B>) {
      return IsEqualIID(riid, __uuidof(typename detail::InterfaceOf<B>::type));
    } else {
      return false;
    }
  }

  std::atomic<ULONG> refs_{1};
  const void* identityKey_ = nullptr;
};

}  // namespace t4::com
