#pragma once

#include <oaidl.h>
#include <windows.h>

#include <span>

#include "Invocation.h"

namespace t4standin {

// One late-bound member: its name (found without regard to letter case), its
// dispatch id, whether it can be read or called (kRead) and assigned
// (kWrite), and how many positional arguments a read or call takes.
struct DispatchMember {
  const wchar_t* name;
  DISPID id;
  unsigned access;
  UINT minArgs;
  UINT maxArgs;
};
constexpr unsigned kRead = 1;
constexpr unsigned kWrite = 2;

// IUnknown and a hand-written IDispatch over a member table; there is no
// type library. A read is accepted with DISPATCH_METHOD, DISPATCH_PROPERTYGET
// or both (VBScript sends both for `x = obj.Member(...)`, JScript one of
// them), an assignment with DISPATCH_PROPERTYPUT or DISPATCH_PROPERTYPUTREF.
// Argument counts are checked here, so Call sees only calls that fit;
// arguments given to a member that takes none go to the default member of
// what it returns, as OLE Automation does for Outlook's own objects.
class DispatchObject : public IDispatch {
 public:
  DispatchObject(const DispatchObject&) = delete;
  DispatchObject& operator=(const DispatchObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) noexcept override;
  ULONG STDMETHODCALLTYPE AddRef() noexcept override;
  ULONG STDMETHODCALLTYPE Release() noexcept override;

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) noexcept override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) noexcept override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID riid, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) noexcept override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID riid, LCID, WORD flags, DISPPARAMS* params,
                                   VARIANT* result, EXCEPINFO* excep,
                                   UINT* argErr) noexcept override;

 protected:
  explicit DispatchObject(std::span<const DispatchMember> members) noexcept;
  virtual ~DispatchObject();

  // Interfaces besides IUnknown and IDispatch (not AddRef'ed), or nullptr.
  virtual void* QueryOther(REFIID) noexcept { return nullptr; }
  // Runs member `id`; a read or call when !call.IsPut().
  virtual HRESULT Call(DISPID id, Invocation& call) = 0;

 private:
  HRESULT SafeCall(DISPID id, WORD flags, DISPPARAMS* params, VARIANT* result, EXCEPINFO* excep,
                   UINT* argErr) noexcept;
  HRESULT InvokeDefaultOfResult(DISPID id, WORD flags, DISPPARAMS* params, VARIANT* result,
                                EXCEPINFO* excep, UINT* argErr) noexcept;

  std::span<const DispatchMember> members_;
  volatile LONG refs_ = 1;
};

}  // namespace t4standin
