#include "Registration.h"

#include <objbase.h>

#include <string>

#include "StandInModule.h"

namespace t4standin {

namespace {

struct ClassEntry {
  const CLSID* clsid;
  const wchar_t* progId;
  const wchar_t* description;
};

const ClassEntry kClasses[] = {
    {&CLSID_StandInApplication, L"Tandrel4Test.Outlook", L"Tandrel4 test stand-in for Outlook"},
    {&CLSID_StandInApplicationNoEvents, L"Tandrel4Test.OutlookNoEvents",
     L"Tandrel4 test stand-in for Outlook, without events"},
    {&CLSID_StandInSession, L"dimdo.dimdosession", L"Tandrel4 test stand-in MAPI session"},
    {&CLSID_StandInUtils, L"dimdo.sfUtils", L"Tandrel4 test stand-in MAPI utilities"},
    {&CLSID_StandInTable, L"dimdo.sfTable", L"Tandrel4 test stand-in MAPI table"},
};

std::wstring GuidText(const GUID& guid) {
  wchar_t text[40] = {};
  ::StringFromGUID2(guid, text, 40);
  return text;
}

// Creates `path` under HKEY_CLASSES_ROOT and sets its value `name` (nullptr:
// the default value) to `value`.
HRESULT SetValue(const std::wstring& path, const wchar_t* name, const std::wstring& value) {
  HKEY key = nullptr;
  LONG status = ::RegCreateKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, nullptr,
                                  REG_OPTION_NON_VOLATILE, KEY_SET_VALUE, nullptr, &key, nullptr);
  if (status == ERROR_SUCCESS) {
    status = ::RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                              static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    ::RegCloseKey(key);
  }
  return HRESULT_FROM_WIN32(status);
}

HRESULT DeleteTree(const std::wstring& path) {
  const LONG status = ::RegDeleteTreeW(HKEY_CLASSES_ROOT, path.c_str());
  if (status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND) {
    // RegDeleteTreeW empties the key; the key itself goes with RegDeleteKeyW.
    const LONG removed = ::RegDeleteKeyW(HKEY_CLASSES_ROOT, path.c_str());
    if (removed == ERROR_SUCCESS || removed == ERROR_FILE_NOT_FOUND) return S_OK;
    return HRESULT_FROM_WIN32(removed);
  }
  return HRESULT_FROM_WIN32(status);
}

}  // namespace

HRESULT Registration::Register() noexcept {
  wchar_t module[MAX_PATH] = {};
  const DWORD length = ::GetModuleFileNameW(StandInModule::Instance(), module, MAX_PATH);
  if (length == 0 || length >= MAX_PATH) return E_FAIL;
  try {
    for (const ClassEntry& entry : kClasses) {
      const std::wstring clsid = GuidText(*entry.clsid);
      const std::wstring classKey = L"CLSID\\" + clsid;
      HRESULT hr = SetValue(classKey, nullptr, entry.description);
      if (SUCCEEDED(hr)) hr = SetValue(classKey + L"\\InprocServer32", nullptr, module);
      if (SUCCEEDED(hr)) {
        hr = SetValue(classKey + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
      }
      if (SUCCEEDED(hr)) hr = SetValue(classKey + L"\\ProgID", nullptr, entry.progId);
      if (SUCCEEDED(hr)) hr = SetValue(entry.progId, nullptr, entry.description);
      if (SUCCEEDED(hr)) hr = SetValue(std::wstring(entry.progId) + L"\\CLSID", nullptr, clsid);
      if (FAILED(hr)) {
        Unregister();
        return hr;
      }
    }
  } catch (...) {
    Unregister();
    return E_OUTOFMEMORY;
  }
  return S_OK;
}

HRESULT Registration::Unregister() noexcept {
  HRESULT result = S_OK;
  try {
    for (const ClassEntry& entry : kClasses) {
      HRESULT hr = DeleteTree(L"CLSID\\" + GuidText(*entry.clsid));
      if (FAILED(hr)) result = hr;
      hr = DeleteTree(entry.progId);
      if (FAILED(hr)) result = hr;
    }
  } catch (...) {
    return E_OUTOFMEMORY;
  }
  return result;
}

}  // namespace t4standin
