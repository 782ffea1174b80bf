// Entry points of Tandrel4.dll. Besides the four standard self-registration
// and class-object exports the DLL exports DllInstall, the only entry that
// `regsvr32 /n /i:user` reaches, for per-user registration.

#include <windows.h>

#include "com/ClassFactory.h"
#include "com/ComModule.h"
#include "com/Registration.h"
#include "platform/common/DefaultPorts.h"
#include "platform/win32/ModuleHandle.h"

using t4::com::ClassFactory;
using t4::com::ComModule;
using t4::com::RegistrationScope;

extern "C" {

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved) {
  switch (reason) {
    case DLL_PROCESS_ATTACH:
      // The message table and the type library are resources of this DLL.
      t4::win32::SetModuleHandle(instance);
      t4::platform::UseDefaultPorts();
      ::DisableThreadLibraryCalls(instance);
      break;
    case DLL_PROCESS_DETACH:
      // On FreeLibrary (reserved == nullptr) oleaut32 is still loaded and the
      // cached type library can be released; at process exit it must not be
      // touched any more.
      if (reserved == nullptr) ComModule::ReleaseTypeInfos();
      break;
    default:
      break;
  }
  return TRUE;
}

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, LPVOID* object) {
  return ClassFactory::GetClassObject(clsid, iid, object);
}

STDAPI DllCanUnloadNow() {
  return ComModule::CanUnload() ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
  return t4::com::RegisterServer(RegistrationScope::kMachine);
}

STDAPI DllUnregisterServer() {
  return t4::com::UnregisterServer(RegistrationScope::kMachine);
}

// regsvr32 /i[:cmdline] calls DllInstall(TRUE, cmdline) after DllRegisterServer,
// regsvr32 /n /i:cmdline calls only DllInstall; /u calls it with FALSE.
// "user" registers for the current user, "machine" or nothing for all users.
STDAPI DllInstall(BOOL install, LPCWSTR commandLine) {
  RegistrationScope scope = RegistrationScope::kMachine;
  if (!t4::com::ParseRegistrationScope(commandLine, &scope)) return E_INVALIDARG;
  return install ? t4::com::RegisterServer(scope) : t4::com::UnregisterServer(scope);
}

}  // extern "C"
