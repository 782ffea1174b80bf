#include "com/LanguageSupport.h"

#include "com/ErrorBoundary.h"

namespace t4::com {

HRESULT LanguageSupport::GetLanguageID(REFIID iid, const ILanguage& core, LONG* value) noexcept {
  if (value == nullptr) return E_POINTER;
  return Boundary(iid, [&] { *value = core.LanguageID(); });
}

HRESULT LanguageSupport::PutLanguageID(REFIID iid, ILanguage& core, LONG value) noexcept {
  return Boundary(iid, [&] { core.SetLanguageID(value); });
}

HRESULT LanguageSupport::GetSupportedLanguages(REFIID iid, const ILanguage& core,
                                               IDispatch** languages) noexcept {
  if (languages == nullptr) return E_POINTER;
  *languages = nullptr;
  // The core has no list object to wrap yet; whatever it returns, hosts see
  // Nothing until it has one.
  return Boundary(iid, [&] { (void)core.SupportedLanguages(); });
}

}  // namespace t4::com
