#pragma once

#include <windows.h>

namespace t4standin {

// Writes and removes the keys of the three classes under HKEY_CLASSES_ROOT:
// CLSID\{...} with InprocServer32 (this DLL, ThreadingModel Apartment) and
// ProgID, and the ProgID keys with their CLSID.
class Registration {
 public:
  static HRESULT Register() noexcept;
  // Keys that are already gone are no error.
  static HRESULT Unregister() noexcept;
};

}  // namespace t4standin
