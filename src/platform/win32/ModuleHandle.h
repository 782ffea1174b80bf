#pragma once

#include <windows.h>

namespace t4::win32 {

// The module the library's resources live in: the DLL itself (DllMain stores
// it) or, in a test program that links the core statically, the program.
HMODULE ModuleHandle();
void SetModuleHandle(HMODULE module);

}  // namespace t4::win32
