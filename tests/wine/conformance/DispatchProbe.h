#pragma once

#include <oaidl.h>
#include <windows.h>

#include <string>

namespace t4test {

// Calls one member of a dual interface through IDispatch::Invoke with a
// harmless argument for each parameter (0, "", False, a by-reference
// variable, Nothing; optional arguments left out), as a script would.
struct ProbeResult {
  HRESULT hr = S_OK;
  HRESULT scode = S_OK;  // EXCEPINFO.scode when hr is DISP_E_EXCEPTION
  std::wstring description;
  std::wstring source;
};

ProbeResult InvokeWithDefaults(IDispatch* dispatch, const FUNCDESC& func);

// The vtable view of a dual interface in `lib` (TKIND_INTERFACE), AddRef'ed.
HRESULT VtableTypeInfo(ITypeLib* lib, REFIID iid, ITypeInfo** info);

// The name of a member.
std::wstring MemberName(ITypeInfo* info, MEMBERID id);

}  // namespace t4test
