#pragma once

#include <unknwn.h>
#include <windows.h>

namespace t4standin {

// The class object of one of the creatable classes.
class ClassFactory final : public IClassFactory {
 public:
  enum Kind { kApplication, kApplicationNoEvents, kSession, kUtils, kTable };

  // DllGetClassObject: the class object for `clsid`, asked for as `iid`.
  static HRESULT GetClassObject(REFCLSID clsid, REFIID iid, void** object) noexcept;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) noexcept override;
  ULONG STDMETHODCALLTYPE AddRef() noexcept override;
  ULONG STDMETHODCALLTYPE Release() noexcept override;

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID riid,
                                           void** object) noexcept override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) noexcept override;

 private:
  explicit ClassFactory(Kind kind) noexcept;
  ~ClassFactory();

  Kind kind_;
  volatile LONG refs_ = 1;
};

}  // namespace t4standin
