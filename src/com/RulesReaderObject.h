#pragma once

#include "com/ComObject.h"
#include "com/ProvideClassInfo2.h"
#include "com/Tandrel4_h.h"

namespace t4::com {

// COM face of the rules component, the creatable class CategoryRules. It
// holds nothing itself: each call builds a fresh core object over Outlook's
// object model (late bound through the IDispatch the caller passes) and
// hands it out in its wrapper.
class RulesReaderObject final
    : public ComObject<RulesReaderObject, DispatchImpl<_CategoryRulesReader>,
                       ProvideClassInfo2<CLSID_CategoryRules>> {
 public:
  // Class factory entry.
  static HRESULT Create(REFIID iid, void** object) noexcept;

  // _CategoryRulesReader
  HRESULT STDMETHODCALLTYPE GetCategoryRules(VARIANT OutlookApp,
                                             IDispatch** oRules) noexcept override;
  HRESULT STDMETHODCALLTYPE GetMasterlist(VARIANT OutlookApp,
                                          IDispatch** oMasterlist) noexcept override;
};

}  // namespace t4::com
