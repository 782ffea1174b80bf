#pragma once

#include <windows.h>

namespace t4standin {

// The class identifiers of the stand-in. They are fixed (README.md lists
// them) because the Wine test run checks the registry keys by name.
extern const CLSID CLSID_StandInApplication;          // Tandrel4Test.Outlook
extern const CLSID CLSID_StandInApplicationNoEvents;  // Tandrel4Test.OutlookNoEvents
extern const CLSID CLSID_StandInSession;              // dimdo.dimdosession
extern const CLSID CLSID_StandInUtils;                // dimdo.sfUtils
extern const CLSID CLSID_StandInTable;                // dimdo.sfTable

// The source dispinterfaces of Outlook's Application events.
extern const IID DIID_ApplicationEvents;     // {0006304E-0000-0000-C000-000000000046}
extern const IID DIID_ApplicationEvents_11;  // {0006302C-0000-0000-C000-000000000046}

// What DllCanUnloadNow needs: the number of live objects (every COM object
// of the DLL counts itself) and of IClassFactory::LockServer locks.
class StandInModule {
 public:
  static void SetInstance(HINSTANCE instance) noexcept { instance_ = instance; }
  static HINSTANCE Instance() noexcept { return instance_; }

  static void ObjectCreated() noexcept { ::InterlockedIncrement(&objects_); }
  static void ObjectDestroyed() noexcept { ::InterlockedDecrement(&objects_); }
  static void Lock(bool lock) noexcept {
    if (lock) {
      ::InterlockedIncrement(&locks_);
    } else {
      ::InterlockedDecrement(&locks_);
    }
  }
  static bool CanUnload() noexcept { return objects_ == 0 && locks_ == 0; }

 private:
  static HINSTANCE instance_;
  static volatile LONG objects_;
  static volatile LONG locks_;
};

}  // namespace t4standin
