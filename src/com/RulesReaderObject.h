#pragma once

#include "com/ComObject.h"
#include "com/Tandrel4_h.h"

namespace t4::com {

// COM face of the rules component, the creatable class CategoryRules. It
// holds nothing itself: each call builds a fresh core object over Outlook's
// object model (late bound through the IDispatch the caller passes) and
// hands it out in its wrapper.
class RulesReaderObject final
    : public ComObject<RulesReaderObject, DispatchImpl<_CategoryRulesReader>, IProvideClassInfo2> {
 public:
  // Class factory entry.
  static HRESULT Create(REFIID iid, void** object) noexcept;

  // _CategoryRulesReader
  HRESULT STDMETHODCALLTYPE GetCategoryRules(VARIANT OutlookApp,
                                             IDispatch** oRules) noexcept override;
  HRESULT STDMETHODCALLTYPE GetMasterlist(VARIANT OutlookApp,
                                          IDispatch** oMasterlist) noexcept override;

  // IProvideClassInfo2
  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) noexcept override;
  HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* guid) noexcept override;
};

}  // namespace t4::com
