#pragma once

#include <windows.h>

namespace t4::com {

// Where the server is registered: for all users (HKEY_CLASSES_ROOT, needs
// administrator rights; DllRegisterServer) or for the current user only
// (HKEY_CURRENT_USER\Software\Classes; regsvr32 /n /i:user).
enum class RegistrationScope { kMachine, kUser };

// Registers the creatable classes (CLSID with InprocServer32, ProgID,
// VersionIndependentProgID, TypeLib), their ProgIDs and the type library.
// A failure half-way removes what was written.
HRESULT RegisterServer(RegistrationScope scope) noexcept;

// Removes everything RegisterServer writes in that scope. Keys that are
// already gone are no error.
HRESULT UnregisterServer(RegistrationScope scope) noexcept;

// The scope named by the command line of DllInstall: "user" (any case,
// blanks around it ignored) or "machine"/empty. Returns false for anything
// else.
bool ParseRegistrationScope(const wchar_t* commandLine, RegistrationScope* scope) noexcept;

}  // namespace t4::com
