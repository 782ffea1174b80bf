#include "com/Registration.h"

#include <oleauto.h>
#include <olectl.h>

#include <optional>
#include <string>
#include <string_view>

#include "com/ComModule.h"
#include "com/Tandrel4_h.h"

namespace t4::com {

namespace {

struct ClassEntry {
  const CLSID* clsid;
  const wchar_t* description;
  const wchar_t* progId;         // version independent
  const wchar_t* versionProgId;  // current version
};

// Only the creatable classes are registered: the others are reached through
// the object model and need no CLSID key.
const ClassEntry kClasses[] = {
    {&CLSID_Application, L"Tandrel4 Application", L"Tandrel4.Application",
     L"Tandrel4.Application.1"},
    {&CLSID_FolderData, L"Tandrel4 FolderData", L"Tandrel4.FolderData", L"Tandrel4.FolderData.1"},
    // The library finds the rules component by its class identifier; the
    // ProgIDs are for hosts that create it themselves.
    {&CLSID_CategoryRules, L"Tandrel4 CategoryRules", L"Tandrel4.CategoryRules",
     L"Tandrel4.CategoryRules.1"},
};

constexpr WORD kTypeLibMajor = 1;
constexpr WORD kTypeLibMinor = 0;
constexpr wchar_t kTypeLibVersion[] = L"1.0";

#ifdef _WIN64
constexpr SYSKIND kSysKind = SYS_WIN64;
#else
constexpr SYSKIND kSysKind = SYS_WIN32;
#endif

std::wstring GuidText(const GUID& guid) {
  wchar_t text[40] = {};
  ::StringFromGUID2(guid, text, 40);
  return text;
}

// Creates `subKey` below `root` and sets its default value (and, if given,
// one named value).
LSTATUS SetKey(HKEY root, const std::wstring& subKey, const std::wstring& value,
               const wchar_t* name = nullptr, const std::wstring& namedValue = std::wstring()) {
  HKEY key = nullptr;
  LSTATUS status = ::RegCreateKeyExW(root, subKey.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                     KEY_SET_VALUE, nullptr, &key, nullptr);
  if (status != ERROR_SUCCESS) return status;
  if (!value.empty()) {
    status = ::RegSetValueExW(key, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                              static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
  }
  if (status == ERROR_SUCCESS && name != nullptr) {
    status =
        ::RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(namedValue.c_str()),
                         static_cast<DWORD>((namedValue.size() + 1) * sizeof(wchar_t)));
  }
  ::RegCloseKey(key);
  return status;
}

// Deletes `subKey` with everything below it; a missing key is fine.
LSTATUS DeleteTree(HKEY root, const std::wstring& subKey) {
  const LSTATUS status = ::RegDeleteTreeW(root, subKey.c_str());
  if (status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND) {
    const LSTATUS last = ::RegDeleteKeyW(root, subKey.c_str());
    return last == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : last;
  }
  return status;
}

LSTATUS RegisterClassKeys(HKEY root, const ClassEntry& entry, const std::wstring& modulePath) {
  const std::wstring clsid = GuidText(*entry.clsid);
  const std::wstring base = L"CLSID\\" + clsid;
  LSTATUS status = SetKey(root, base, entry.description);
  if (status == ERROR_SUCCESS) {
    status = SetKey(root, base + L"\\InprocServer32", modulePath, L"ThreadingModel", L"Apartment");
  }
  if (status == ERROR_SUCCESS) status = SetKey(root, base + L"\\ProgID", entry.versionProgId);
  if (status == ERROR_SUCCESS) {
    status = SetKey(root, base + L"\\VersionIndependentProgID", entry.progId);
  }
  if (status == ERROR_SUCCESS) status = SetKey(root, base + L"\\TypeLib", GuidText(LIBID_Tandrel4));
  if (status == ERROR_SUCCESS) status = SetKey(root, base + L"\\Version", kTypeLibVersion);
  if (status == ERROR_SUCCESS) status = SetKey(root, base + L"\\Programmable", std::wstring());

  if (status == ERROR_SUCCESS) status = SetKey(root, entry.progId, entry.description);
  if (status == ERROR_SUCCESS)
    status = SetKey(root, std::wstring(entry.progId) + L"\\CLSID", clsid);
  if (status == ERROR_SUCCESS) {
    status = SetKey(root, std::wstring(entry.progId) + L"\\CurVer", entry.versionProgId);
  }
  if (status == ERROR_SUCCESS) status = SetKey(root, entry.versionProgId, entry.description);
  if (status == ERROR_SUCCESS) {
    status = SetKey(root, std::wstring(entry.versionProgId) + L"\\CLSID", clsid);
  }
  return status;
}

LSTATUS UnregisterClassKeys(HKEY root, const ClassEntry& entry) {
  LSTATUS result = ERROR_SUCCESS;
  for (const std::wstring& key : {L"CLSID\\" + GuidText(*entry.clsid), std::wstring(entry.progId),
                                  std::wstring(entry.versionProgId)}) {
    const LSTATUS status = DeleteTree(root, key);
    if (status != ERROR_SUCCESS) result = status;
  }
  return result;
}

HRESULT RegisterTypeLibrary(const std::wstring& modulePath) {
  ITypeLib* lib = nullptr;
  HRESULT hr = ComModule::TypeLib(&lib);
  if (FAILED(hr)) return hr;
  std::wstring helpDir = modulePath;
  const size_t slash = helpDir.find_last_of(L"\\/");
  helpDir.resize(slash == std::wstring::npos ? 0 : slash);
  hr = ::RegisterTypeLib(lib, const_cast<wchar_t*>(modulePath.c_str()),
                         helpDir.empty() ? nullptr : const_cast<wchar_t*>(helpDir.c_str()));
  lib->Release();
  return hr;
}

HRESULT UnregisterTypeLibrary() {
  HRESULT hr = ::UnRegisterTypeLib(LIBID_Tandrel4, kTypeLibMajor, kTypeLibMinor, 0, kSysKind);
  if (hr == TYPE_E_REGISTRYACCESS || hr == TYPE_E_LIBNOTREGISTERED ||
      hr == HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND)) {
    hr = S_OK;  // nothing (left) to remove
  }
  // The library key itself stays behind when another version or platform
  // is still registered; otherwise remove the empty key.
  ::RegDeleteKeyW(HKEY_CLASSES_ROOT, (L"TypeLib\\" + GuidText(LIBID_Tandrel4)).c_str());
  return hr;
}

// Per-user registration writes through HKEY_CLASSES_ROOT like the machine
// registration, with HKEY_CLASSES_ROOT mapped onto HKCU\Software\Classes for
// this process for the time of the call (the mechanism installers use for
// per-user COM registration). RegisterTypeLib honours the mapping once
// OaEnablePerUserTLibRegistration has been called (newer oleaut32 only; it
// is looked up at run time).
class UserClassesOverride {
 public:
  UserClassesOverride() {
    if (::RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Classes", 0, nullptr,
                          REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr, &classes_,
                          nullptr) != ERROR_SUCCESS) {
      classes_ = nullptr;
      return;
    }
    if (HMODULE oleaut = ::GetModuleHandleW(L"oleaut32.dll")) {
      using EnablePerUser = void(WINAPI*)();
      auto enable = reinterpret_cast<EnablePerUser>(
          reinterpret_cast<void*>(::GetProcAddress(oleaut, "OaEnablePerUserTLibRegistration")));
      if (enable != nullptr) enable();
    }
    active_ = ::RegOverridePredefKey(HKEY_CLASSES_ROOT, classes_) == ERROR_SUCCESS;
  }
  ~UserClassesOverride() {
    if (active_) ::RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
    if (classes_ != nullptr) ::RegCloseKey(classes_);
  }
  UserClassesOverride(const UserClassesOverride&) = delete;
  UserClassesOverride& operator=(const UserClassesOverride&) = delete;

  bool Active() const { return active_; }

 private:
  HKEY classes_ = nullptr;
  bool active_ = false;
};

HRESULT RegisterAll() {
  std::wstring modulePath;
  try {
    modulePath = ComModule::ModulePath();
  } catch (...) {
    return E_OUTOFMEMORY;
  }
  if (modulePath.empty()) return HRESULT_FROM_WIN32(::GetLastError());
  for (const ClassEntry& entry : kClasses) {
    if (RegisterClassKeys(HKEY_CLASSES_ROOT, entry, modulePath) != ERROR_SUCCESS) {
      return SELFREG_E_CLASS;
    }
  }
  if (FAILED(RegisterTypeLibrary(modulePath))) return SELFREG_E_TYPELIB;
  return S_OK;
}

HRESULT UnregisterAll() {
  HRESULT result = S_OK;
  for (const ClassEntry& entry : kClasses) {
    if (UnregisterClassKeys(HKEY_CLASSES_ROOT, entry) != ERROR_SUCCESS) result = SELFREG_E_CLASS;
  }
  if (FAILED(UnregisterTypeLibrary()) && SUCCEEDED(result)) result = SELFREG_E_TYPELIB;
  return result;
}

}  // namespace

HRESULT RegisterServer(RegistrationScope scope) noexcept {
  try {
    std::optional<UserClassesOverride> mapping;
    if (scope == RegistrationScope::kUser && !mapping.emplace().Active()) return E_ACCESSDENIED;
    const HRESULT hr = RegisterAll();
    if (FAILED(hr)) UnregisterAll();
    return hr;
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

HRESULT UnregisterServer(RegistrationScope scope) noexcept {
  try {
    std::optional<UserClassesOverride> mapping;
    if (scope == RegistrationScope::kUser && !mapping.emplace().Active()) return E_ACCESSDENIED;
    return UnregisterAll();
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

bool ParseRegistrationScope(const wchar_t* commandLine, RegistrationScope* scope) noexcept {
  std::wstring_view text = commandLine != nullptr ? commandLine : L"";
  while (!text.empty() && (text.front() == L' ' || text.front() == L'\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == L' ' || text.back() == L'\t')) text.remove_suffix(1);
  if (text.empty() || ::CompareStringOrdinal(text.data(), static_cast<int>(text.size()), L"machine",
                                             -1, TRUE) == CSTR_EQUAL) {
    *scope = RegistrationScope::kMachine;
    return true;
  }
  if (::CompareStringOrdinal(text.data(), static_cast<int>(text.size()), L"user", -1, TRUE) ==
      CSTR_EQUAL) {
    *scope = RegistrationScope::kUser;
    return true;
  }
  return false;
}

}  // namespace t4::com
