#include "platform/win32/Win32StringResources.h"
#include "platform/common/DefaultPorts.h"

#include <windows.h>

#include "platform/win32/ModuleHandle.h"
#include "support/Ports.h"

namespace t4 {

namespace win32 {

std::optional<std::u16string> Win32StringResources::Text(int32_t id) {
  if (id < 0 || id > 0xFFFF) return std::nullopt;
  // With a zero buffer size LoadStringW hands out a pointer into the
  // resource itself, so texts of any length come back whole.
  const wchar_t* text = nullptr;
  const int n =
      ::LoadStringW(ModuleHandle(), static_cast<UINT>(id), reinterpret_cast<LPWSTR>(&text), 0);
  if (n <= 0 || text == nullptr) return std::nullopt;
  return std::u16string(reinterpret_cast<const char16_t*>(text), static_cast<size_t>(n));
}

}  // namespace win32

std::shared_ptr<IStringResources> CreatePlatformStringResources() {
  return std::make_shared<win32::Win32StringResources>();
}

}  // namespace t4
