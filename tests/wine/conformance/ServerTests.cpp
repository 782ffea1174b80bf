// The registered DLL as an in-process server: its classes created through
// COM, its exports and class objects, and its resources.

#include "ServerTests.h"

#include <ocidl.h>
#include <olectl.h>
#include <windows.h>

#include <string>
#include <vector>

#include "TestLog.h"
#include "com/Tandrel4_h.h"

namespace t4test {

namespace {

using CanUnloadFunction = HRESULT(STDAPICALLTYPE*)();
using GetClassObjectFunction = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);

// ProgID `progId` resolves, to `expected`.
void CheckProgId(const wchar_t* progId, const CLSID& expected) {
  const std::string name = "ProgID " + TestLog::Utf8(progId);
  CLSID clsid = GUID_NULL;
  TestLog::CheckHr(::CLSIDFromProgID(progId, &clsid), S_OK, name + " resolves");
  TestLog::Check(IsEqualCLSID(clsid, expected), name + " is CLSID");
}

}  // namespace

void TestCreation() {
  CLSID clsid = GUID_NULL;
  CheckProgId(L"Tandrel4.Application", CLSID_Application);
  CheckProgId(L"Tandrel4.Application.1", CLSID_Application);
  CheckProgId(L"Tandrel4.FolderData", CLSID_FolderData);
  CheckProgId(L"Tandrel4.FolderData.1", CLSID_FolderData);
  TestLog::Check(FAILED(::CLSIDFromProgID(L"Tandrel4.Category", &clsid)),
                 "noncreatable Category has no ProgID");

  wchar_t* progId = nullptr;
  if (TestLog::CheckHr(::ProgIDFromCLSID(CLSID_Application, &progId), S_OK,
                       "ProgIDFromCLSID Application")) {
    TestLog::Check(std::wstring(progId) == L"Tandrel4.Application.1",
                   "ProgIDFromCLSID Application is the versioned ProgID", TestLog::Utf8(progId));
    ::CoTaskMemFree(progId);
  }

  CheckProgId(L"Tandrel4.CategoryRules", CLSID_CategoryRules);
  CheckProgId(L"Tandrel4.CategoryRules.1", CLSID_CategoryRules);
  TestLog::Check(FAILED(::CLSIDFromProgID(L"Tandrel4.MasterlistObject", &clsid)),
                 "noncreatable MasterlistObject has no ProgID");

  // By CLSID and by ProgID, for the three creatable classes.
  for (const wchar_t* name :
       {L"Tandrel4.Application", L"Tandrel4.FolderData", L"Tandrel4.CategoryRules"}) {
    const std::string label = TestLog::Utf8(name);
    CLSID byProgId = GUID_NULL;
    ::CLSIDFromProgID(name, &byProgId);
    IDispatch* object = nullptr;
    HRESULT hr = ::CoCreateInstance(byProgId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                    reinterpret_cast<void**>(&object));
    if (TestLog::CheckHr(hr, S_OK, "CoCreateInstance by ProgID " + label)) {
      TestLog::Check(object != nullptr && object->Release() == 0,
                     "release of " + label + " by ProgID reaches 0");
    }
  }
  _Application* app = nullptr;
  TestLog::CheckHr(::CoCreateInstance(CLSID_Application, nullptr, CLSCTX_INPROC_SERVER,
                                      IID__Application, reinterpret_cast<void**>(&app)),
                   S_OK, "CoCreateInstance Application by CLSID as _Application");
  if (app != nullptr) app->Release();
  _FolderData* folder = nullptr;
  TestLog::CheckHr(::CoCreateInstance(CLSID_FolderData, nullptr, CLSCTX_INPROC_SERVER,
                                      IID__FolderData, reinterpret_cast<void**>(&folder)),
                   S_OK, "CoCreateInstance FolderData by CLSID as _FolderData");
  if (folder != nullptr) folder->Release();

  IUnknown* unknown = nullptr;
  TestLog::CheckHr(::CoCreateInstance(CLSID_Application, nullptr, CLSCTX_INPROC_SERVER,
                                      IID_IPersist, reinterpret_cast<void**>(&unknown)),
                   E_NOINTERFACE, "CoCreateInstance for an unsupported interface");
  TestLog::Check(unknown == nullptr, "unsupported interface leaves the pointer null");
  TestLog::Check(FAILED(::CoCreateInstance(CLSID_Category, nullptr, CLSCTX_INPROC_SERVER,
                                           IID_IUnknown, reinterpret_cast<void**>(&unknown))),
                 "noncreatable Category cannot be created");

  // Aggregation is not offered.
  IUnknown* outer = nullptr;
  ::CoCreateInstance(CLSID_FolderData, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                     reinterpret_cast<void**>(&outer));
  if (outer != nullptr) {
    TestLog::CheckHr(::CoCreateInstance(CLSID_Application, outer, CLSCTX_INPROC_SERVER,
                                        IID_IUnknown, reinterpret_cast<void**>(&unknown)),
                     CLASS_E_NOAGGREGATION, "CoCreateInstance with an outer object");
    outer->Release();
  }
}

void TestModule() {
  HMODULE module = ::LoadLibraryW(L"Tandrel4.dll");
  if (!TestLog::Check(module != nullptr, "LoadLibrary Tandrel4.dll")) return;
  auto canUnload = reinterpret_cast<CanUnloadFunction>(
      reinterpret_cast<void*>(::GetProcAddress(module, "DllCanUnloadNow")));
  auto getClassObject = reinterpret_cast<GetClassObjectFunction>(
      reinterpret_cast<void*>(::GetProcAddress(module, "DllGetClassObject")));
  TestLog::Check(canUnload && getClassObject && ::GetProcAddress(module, "DllRegisterServer") &&
                     ::GetProcAddress(module, "DllUnregisterServer") &&
                     ::GetProcAddress(module, "DllInstall"),
                 "the registration and class object entry points are exported");
  TestLog::Check(::GetProcAddress(module, "DllMain") == nullptr, "DllMain is not exported");
  if (canUnload == nullptr || getClassObject == nullptr) return;

  TestLog::CheckHr(canUnload(), S_OK, "DllCanUnloadNow with nothing alive");
  IUnknown* object = nullptr;
  ::CoCreateInstance(CLSID_FolderData, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                     reinterpret_cast<void**>(&object));
  TestLog::CheckHr(canUnload(), S_FALSE, "DllCanUnloadNow while an object lives");
  if (object != nullptr) object->Release();
  TestLog::CheckHr(canUnload(), S_OK, "DllCanUnloadNow after the object is released");

  IClassFactory* factory = nullptr;
  if (TestLog::CheckHr(
          getClassObject(CLSID_Application, IID_IClassFactory, reinterpret_cast<void**>(&factory)),
          S_OK, "DllGetClassObject Application")) {
    TestLog::CheckHr(canUnload(), S_FALSE, "DllCanUnloadNow while a class object lives");
    IUnknown* created = reinterpret_cast<IUnknown*>(1);
    TestLog::CheckHr(factory->CreateInstance(reinterpret_cast<IUnknown*>(factory), IID_IUnknown,
                                             reinterpret_cast<void**>(&created)),
                     CLASS_E_NOAGGREGATION, "CreateInstance with an outer object");
    TestLog::Check(created == nullptr, "refused aggregation leaves the pointer null");
    TestLog::CheckHr(factory->LockServer(TRUE), S_OK, "LockServer(TRUE)");
    factory->Release();
    TestLog::CheckHr(canUnload(), S_FALSE, "DllCanUnloadNow while the server is locked");
    getClassObject(CLSID_Application, IID_IClassFactory, reinterpret_cast<void**>(&factory));
    TestLog::CheckHr(factory->LockServer(FALSE), S_OK, "LockServer(FALSE)");
    _Application* app = nullptr;
    TestLog::CheckHr(
        factory->CreateInstance(nullptr, IID__Application, reinterpret_cast<void**>(&app)), S_OK,
        "CreateInstance through the class object");
    TestLog::Check(factory->Release() == 0, "class object released to 0");
    TestLog::CheckHr(canUnload(), S_FALSE, "DllCanUnloadNow while the created object lives");
    if (app != nullptr) app->Release();
    TestLog::CheckHr(canUnload(), S_OK, "DllCanUnloadNow after unlock and release");
  }
  const GUID unknown = {0x12345678, 0x1234, 0x1234, {1, 2, 3, 4, 5, 6, 7, 8}};
  TestLog::CheckHr(getClassObject(unknown, IID_IClassFactory, reinterpret_cast<void**>(&factory)),
                   CLASS_E_CLASSNOTAVAILABLE, "DllGetClassObject of an unknown CLSID");
  TestLog::CheckHr(
      getClassObject(CLSID_Category, IID_IClassFactory, reinterpret_cast<void**>(&factory)),
      CLASS_E_CLASSNOTAVAILABLE, "DllGetClassObject of the noncreatable Category");
  TestLog::CheckHr(
      getClassObject(CLSID_FolderData, IID_IDispatch, reinterpret_cast<void**>(&factory)),
      E_NOINTERFACE, "DllGetClassObject for an interface a class object lacks");

  // The message table (German texts, ids 10..50; the English block is not
  // part of the library).
  const struct {
    UINT id;
    const wchar_t* text;
  } messages[] = {
      {10, L"Der Name existiert bereits.||Bitte w\u00e4hlen Sie einen anderen Namen."},
      {20, L"Fehler beim Zugriff auf Outlook.||Bitte starten Sie die Anwendung erneut."},
      {30, L"Das Outlook-Element wurde nicht gefunden."},
      {40, L"Das Dateiformat wird nicht unterst\u00fctzt."},
      {50, L"Fehler beim Erstellen der Datei:|#0"},
  };
  for (const auto& message : messages) {
    wchar_t buffer[256] = {};
    const int n = ::LoadStringW(module, message.id, buffer, 256);
    TestLog::Check(n > 0 && std::wstring(buffer) == message.text,
                   "message " + std::to_string(message.id),
                   "got \"" + TestLog::Utf8(buffer) + "\"");
  }
  wchar_t buffer[64] = {};
  TestLog::Check(::LoadStringW(module, 10010, buffer, 64) == 0, "message 10010 is absent");

  // Version resource.
  wchar_t path[MAX_PATH] = {};
  ::GetModuleFileNameW(module, path, MAX_PATH);
  DWORD handle = 0;
  const DWORD size = ::GetFileVersionInfoSizeW(path, &handle);
  std::vector<BYTE> data(size);
  if (TestLog::Check(size > 0 && ::GetFileVersionInfoW(path, 0, size, data.data()),
                     "version resource present")) {
    const struct {
      const wchar_t* key;
      const wchar_t* value;
    } fields[] = {{L"FileDescription", L"Tandrel4 category automation library"},
                  {L"ProductName", L"Tandrel4"},
                  {L"CompanyName", L"Quorvane"},
                  {L"FileVersion", L"0.1.0"},
                  {L"OriginalFilename", L"Tandrel4.dll"}};
    for (const auto& field : fields) {
      const std::wstring query = std::wstring(L"\\StringFileInfo\\040904B0\\") + field.key;
      wchar_t* value = nullptr;
      UINT length = 0;
      const bool found =
          ::VerQueryValueW(data.data(), query.c_str(), reinterpret_cast<void**>(&value), &length) &&
          value != nullptr;
      TestLog::Check(found && std::wstring(value) == field.value,
                     "version " + TestLog::Utf8(field.key),
                     found ? TestLog::Utf8(value) : "missing");
    }
    VS_FIXEDFILEINFO* fixed = nullptr;
    UINT length = 0;
    TestLog::Check(
        ::VerQueryValueW(data.data(), L"\\", reinterpret_cast<void**>(&fixed), &length) &&
            fixed->dwFileVersionMS == 0x00000001 && fixed->dwFileVersionLS == 0,
        "fixed file version 0.1.0.0");
  }
  ::FreeLibrary(module);
}

}  // namespace t4test
