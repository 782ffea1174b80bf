#include "platform/win32/ModuleHandle.h"

namespace t4::win32 {

namespace {
HMODULE g_module = nullptr;
}

HMODULE ModuleHandle() {
  return g_module != nullptr ? g_module : ::GetModuleHandleW(nullptr);
}
void SetModuleHandle(HMODULE module) {
  g_module = module;
}

}  // namespace t4::win32
