#pragma once

// A COM object of the library's own kind (ComObject) for the tests of the
// shared interface implementations: _ILanguage as its default interface,
// answering nothing of interest, and `Mixins` as the implementations under
// test.
#include <windows.h>

#include "com/ComObject.h"
#include "com/Tandrel4_h.h"

namespace t4::test {

template <class... Mixins>
class ProbeObject final
    : public com::ComObject<ProbeObject<Mixins...>, com::DispatchImpl<_ILanguage>, Mixins...> {
 public:
  HRESULT STDMETHODCALLTYPE get_LanguageID(LONG* value) noexcept override {
    *value = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE put_LanguageID(LONG) noexcept override { return S_OK; }
  HRESULT STDMETHODCALLTYPE get_SupportedLanguages(IDispatch** value) noexcept override {
    *value = nullptr;
    return S_OK;
  }
};

}  // namespace t4::test
