#pragma once

#include <unknwn.h>
#include <windows.h>

namespace t4::com {

// Creates a new object of one creatable class and queries it for `iid`.
using CreateFunction = HRESULT (*)(REFIID iid, void** object);

// The class objects of the creatable classes. Aggregation is not offered
// (CLASS_E_NOAGGREGATION); LockServer holds the module in memory.
class ClassFactory final : public IClassFactory {
 public:
  // The class object for `clsid` (CLASS_E_CLASSNOTAVAILABLE for a class
  // that is not creatable or not ours), queried for `iid`.
  static HRESULT GetClassObject(REFCLSID clsid, REFIID iid, void** object) noexcept;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) noexcept override;
  ULONG STDMETHODCALLTYPE AddRef() noexcept override;
  ULONG STDMETHODCALLTYPE Release() noexcept override;
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID riid,
                                           void** object) noexcept override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) noexcept override;

 private:
  explicit ClassFactory(CreateFunction create) noexcept;
  ~ClassFactory();

  LONG refs_ = 1;
  CreateFunction create_;
};

}  // namespace t4::com
