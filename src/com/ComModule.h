#pragma once

#include <oaidl.h>
#include <windows.h>

#include <string>

namespace t4::com {

// Bookkeeping of the in-process server: how many COM objects (including
// class factories) and how many IClassFactory::LockServer locks are alive.
// DllCanUnloadNow may only agree to unloading when both are zero.
class ComModule {
 public:
  static void ObjectCreated() noexcept;
  static void ObjectDestroyed() noexcept;
  static void Lock() noexcept;
  static void Unlock() noexcept;
  static bool CanUnload() noexcept;
  static long ObjectCount() noexcept;
  static long LockCount() noexcept;

  // Full path of the file that holds the library's resources (Tandrel4.dll,
  // or the test program that links the COM layer statically).
  static std::wstring ModulePath();

  // The type library embedded as TYPELIB resource 1, loaded once without
  // touching the registry. Returns an AddRef'ed pointer.
  static HRESULT TypeLib(ITypeLib** lib) noexcept;

  // For a dual interface `iid`: the dispatch view (what GetTypeInfo hands
  // out) and the vtable view (what DispInvoke needs: invoking through the
  // dispatch view would call IDispatch::Invoke on the object again).
  // Both are cached for the life of the process and returned without AddRef.
  static HRESULT DispatchTypeInfo(REFIID iid, ITypeInfo** info) noexcept;
  static HRESULT InterfaceTypeInfo(REFIID iid, ITypeInfo** info) noexcept;

  // Drops the cached type library (the DLL is being unloaded).
  static void ReleaseTypeInfos() noexcept;
};

}  // namespace t4::com
