#pragma once

// What the checks of the registered DLL (t4_conformance) share: reference
// counts and identities, the module's unload answer, and the categories the
// event and error checks add through the vtable.

#include <oaidl.h>
#include <windows.h>

#include <string>

#include "TestLog.h"
#include "com/Tandrel4_h.h"

namespace t4test {

// A new object of the registered class `clsid` seen as `iid` (a reference
// for the caller). When it cannot be created, the check `what` fails with
// `why` and the result is null.
template <class I>
I* CreateOrFail(REFCLSID clsid, REFIID iid, const std::string& what, const std::string& why) {
  I* object = nullptr;
  if (FAILED(::CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, iid,
                                reinterpret_cast<void**>(&object)))) {
    TestLog::Fail(what, why);
    return nullptr;
  }
  return object;
}

// A new Application seen as _Application; null, with `what` failed, when
// it cannot be created.
_Application* NewApplicationOrFail(const std::string& what);

// The Outlook stand-in (Tandrel4Test.Outlook) as IDispatch; null, with
// `what` failed, when it is not registered.
IDispatch* NewOutlookStandInOrFail(const std::string& what);

// Current reference count of `object` (what AddRef + Release report).
ULONG RefCount(IUnknown* object);

// The IUnknown of `object`, without a reference of its own; null when it
// has none.
IUnknown* IdentityOf(IUnknown* object);

// What DllCanUnloadNow of the loaded DLL says (E_FAIL when it is not loaded).
HRESULT DllCanUnloadNowOfLibrary();

// An optional argument left out, as a typed client passes it.
VARIANT MissingArgument();

// Categories.Add through the vtable, optional arguments left out; the new
// (or existing) category with a reference for the caller, null on failure.
_Category* AddCategory(_Categories* cats, const wchar_t* name, bool inMasterlist = true);

// The category's Name, "<none>" for no category or a failed read.
std::wstring NameOf(_Category* category);

}  // namespace t4test
