#pragma once

#include <oaidl.h>
#include <windows.h>

#include "support/ILanguage.h"

namespace t4::com {

// The _ILanguage members shared by every class that offers the language
// view (Application, FolderData): each forwards to the core object's
// ILanguage.
class LanguageSupport {
 public:
  static HRESULT GetLanguageID(REFIID iid, const ILanguage& core, LONG* value) noexcept;
  static HRESULT PutLanguageID(REFIID iid, ILanguage& core, LONG value) noexcept;
  // The core lists no languages: the result is Nothing.
  static HRESULT GetSupportedLanguages(REFIID iid, const ILanguage& core,
                                       IDispatch** languages) noexcept;
};

}  // namespace t4::com
