#pragma once

// What the checks of the registered DLL (t4_conformance) share: reference
// counts and identities, the module's unload answer, and the categories the
// event and error checks add through the vtable.

#include <oaidl.h>
#include <windows.h>

#include <string>

#include "com/Tandrel4_h.h"

namespace t4test {

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
