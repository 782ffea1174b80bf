#pragma once

#include "com/ComObject.h"
#include "com/Tandrel4_h.h"

namespace t4::com {

// COM face of the collection of the Outlook items read. Answers _OutlookItems (default)
// and _IChild.
// Not wired to the core's OutlookItems yet: every member answers E_NOTIMPL
// ("Not implemented yet: ...") until it is. The class is not creatable and
// no public member hands one out yet.
class OutlookItemsObject final : public ComObject<OutlookItemsObject, DispatchImpl<_OutlookItems>,
                                                  DispatchImpl<_IChild>, IProvideClassInfo> {
 public:
  // A wrapper without core object (tests of the pending members).
  static HRESULT Create(REFIID iid, void** object) noexcept;

  // _OutlookItems
  HRESULT STDMETHODCALLTYPE get_Changed(VARIANT_BOOL* bChanged) noexcept override;
  HRESULT STDMETHODCALLTYPE get_Count(LONG* lCount) noexcept override;
  HRESULT STDMETHODCALLTYPE get_Item(VARIANT Index, _OutlookItem** oItem) noexcept override;
  HRESULT STDMETHODCALLTYPE get_NewEnum(IUnknown** oEnum) noexcept override;

  // _IChild
  HRESULT STDMETHODCALLTYPE Init(LONG lParentPtr, VARIANT sKey) noexcept override;
  HRESULT STDMETHODCALLTYPE get_Key(BSTR* sKey) noexcept override;
  HRESULT STDMETHODCALLTYPE ResetParentPtr() noexcept override;

  // IProvideClassInfo
  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) noexcept override;
};

}  // namespace t4::com
