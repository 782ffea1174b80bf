// Entry points of T4OutlookStandIn.dll, the test-only stand-in for the
// Outlook objects Tandrel4 talks to.

#include <windows.h>

#include "ClassFactory.h"
#include "Registration.h"
#include "StandInModule.h"

using t4standin::ClassFactory;
using t4standin::Registration;
using t4standin::StandInModule;

extern "C" {

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
  if (reason == DLL_PROCESS_ATTACH) {
    StandInModule::SetInstance(instance);
    ::DisableThreadLibraryCalls(instance);
  }
  return TRUE;
}

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, LPVOID* object) {
  return ClassFactory::GetClassObject(clsid, iid, object);
}

STDAPI DllCanUnloadNow() {
  return StandInModule::CanUnload() ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
  return Registration::Register();
}

STDAPI DllUnregisterServer() {
  return Registration::Unregister();
}

}  // extern "C"
