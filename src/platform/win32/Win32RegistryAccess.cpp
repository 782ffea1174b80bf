#include "platform/win32/Win32RegistryAccess.h"
#include "platform/common/DefaultPorts.h"

#include <windows.h>

#include <memory>

#include "platform/win32/WinText.h"
#include "support/Error.h"
#include "support/Ports.h"

namespace t4::win32 {

namespace {

// Registry failures become errors with the system's code as number; the
// master-list stores swallow them, other callers see what went wrong.
[[noreturn]] void Fail(LONG status, const char16_t* what) {
  Error e(static_cast<int32_t>(HRESULT_FROM_WIN32(static_cast<DWORD>(status))), what);
  e.SetLastDllError(static_cast<int32_t>(status));
  throw e;
}

class Key {
 public:
  ~Key() {
    if (key_ != nullptr) ::RegCloseKey(key_);
  }
  HKEY* Out() { return &key_; }
  HKEY Get() const { return key_; }

 private:
  HKEY key_ = nullptr;
};

}  // namespace

std::optional<RegistryData> Win32RegistryAccess::ReadValue(const std::u16string& key,
                                                           const std::u16string& name) {
  Key k;
  LONG status = ::RegOpenKeyExW(HKEY_CURRENT_USER, WinText::Wide(key), 0, KEY_QUERY_VALUE, k.Out());
  if (status == ERROR_FILE_NOT_FOUND) return std::nullopt;
  if (status != ERROR_SUCCESS) Fail(status, u"The registry key cannot be opened.");
  DWORD type = 0;
  DWORD size = 0;
  status = ::RegQueryValueExW(k.Get(), WinText::Wide(name), nullptr, &type, nullptr, &size);
  if (status == ERROR_FILE_NOT_FOUND) return std::nullopt;
  if (status != ERROR_SUCCESS) Fail(status, u"The registry value cannot be read.");
  std::vector<uint8_t> bytes(size);
  status = ::RegQueryValueExW(k.Get(), WinText::Wide(name), nullptr, &type,
                              bytes.empty() ? nullptr : bytes.data(), &size);
  if (status != ERROR_SUCCESS) Fail(status, u"The registry value cannot be read.");
  bytes.resize(size);
  if (type == REG_SZ || type == REG_EXPAND_SZ) {
    std::u16string text;
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
      text += static_cast<char16_t>(bytes[i] | (bytes[i + 1] << 8));
    }
    // The stored terminator (and anything after a first NUL) is not text.
    const size_t nul = text.find(u'\0');
    if (nul != std::u16string::npos) text.resize(nul);
    return RegistryData(text);
  }
  return RegistryData(bytes);
}

void Win32RegistryAccess::WriteValue(const std::u16string& key, const std::u16string& name,
                                     const RegistryData& data) {
  Key k;
  LONG status = ::RegCreateKeyExW(HKEY_CURRENT_USER, WinText::Wide(key), 0, nullptr, 0,
                                  KEY_SET_VALUE, nullptr, k.Out(), nullptr);
  if (status != ERROR_SUCCESS) Fail(status, u"The registry key cannot be created.");
  if (const auto* text = std::get_if<std::u16string>(&data)) {
    status = ::RegSetValueExW(k.Get(), WinText::Wide(name), 0, REG_SZ,
                              reinterpret_cast<const BYTE*>(text->c_str()),
                              static_cast<DWORD>((text->size() + 1) * sizeof(char16_t)));
  } else {
    const auto& bytes = std::get<std::vector<uint8_t>>(data);
    status = ::RegSetValueExW(k.Get(), WinText::Wide(name), 0, REG_BINARY, bytes.data(),
                              static_cast<DWORD>(bytes.size()));
  }
  if (status != ERROR_SUCCESS) Fail(status, u"The registry value cannot be written.");
}

void Win32RegistryAccess::DeleteValue(const std::u16string& key, const std::u16string& name) {
  Key k;
  LONG status = ::RegOpenKeyExW(HKEY_CURRENT_USER, WinText::Wide(key), 0, KEY_SET_VALUE, k.Out());
  if (status == ERROR_FILE_NOT_FOUND) return;
  if (status != ERROR_SUCCESS) Fail(status, u"The registry key cannot be opened.");
  status = ::RegDeleteValueW(k.Get(), WinText::Wide(name));
  if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) {
    Fail(status, u"The registry value cannot be removed.");
  }
}

}  // namespace t4::win32

namespace t4 {

std::shared_ptr<IRegistryAccess> CreatePlatformRegistry() {
  return std::make_shared<win32::Win32RegistryAccess>();
}

}  // namespace t4
