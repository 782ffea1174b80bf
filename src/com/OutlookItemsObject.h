#pragma once

#include <memory>

#include "com/ChildImpl.h"
#include "com/ComObject.h"
#include "com/ProvideClassInfo.h"
#include "com/Tandrel4_h.h"
#include "model/OutlookItems.h"

namespace t4::com {

// COM face of t4::OutlookItems, the items read. Answers _OutlookItems
// (default) and _IChild; handed out by Application.OutlookItems through the
// identity map.
class OutlookItemsObject final
    : public ComObject<OutlookItemsObject, DispatchImpl<_OutlookItems>,
                       ChildImpl<OutlookItemsObject>, ProvideClassInfo<CLSID_OutlookItems>> {
 public:
  using DefaultInterface = _OutlookItems;

  explicit OutlookItemsObject(std::shared_ptr<t4::OutlookItems> core) noexcept;

  // _OutlookItems
  HRESULT STDMETHODCALLTYPE get_Changed(VARIANT_BOOL* bChanged) noexcept override;
  HRESULT STDMETHODCALLTYPE get_Count(LONG* lCount) noexcept override;
  HRESULT STDMETHODCALLTYPE get_Item(VARIANT Index, _OutlookItem** oItem) noexcept override;
  HRESULT STDMETHODCALLTYPE get_NewEnum(IUnknown** oEnum) noexcept override;

  const std::shared_ptr<t4::OutlookItems>& Core() const noexcept { return core_; }

 private:
  std::shared_ptr<t4::OutlookItems> core_;
};

}  // namespace t4::com
