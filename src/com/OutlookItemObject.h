#pragma once

#include <memory>

#include "com/ChildImpl.h"
#include "com/ComObject.h"
#include "com/ProvideClassInfo.h"
#include "com/Tandrel4_h.h"
#include "model/OutlookItem.h"

namespace t4::com {

// COM face of one t4::OutlookItem. Answers _OutlookItem (default) and
// _IChild. Handed out through the identity map by OutlookItems, Category
// and the events; items come only from reading, never from a client.
class OutlookItemObject final
    : public ComObject<OutlookItemObject, DispatchImpl<_OutlookItem>, ChildImpl<OutlookItemObject>,
                       ProvideClassInfo<CLSID_OutlookItem>> {
 public:
  using DefaultInterface = _OutlookItem;

  explicit OutlookItemObject(std::shared_ptr<t4::OutlookItem> core) noexcept;

  // _OutlookItem
  HRESULT STDMETHODCALLTYPE CategoriesAdd(_Category* oCategory) noexcept override;
  HRESULT STDMETHODCALLTYPE CategoriesArray(VARIANT* vNames) noexcept override;
  HRESULT STDMETHODCALLTYPE get_CategoriesCount(LONG* lCount) noexcept override;
  HRESULT STDMETHODCALLTYPE CategoriesRemove(VARIANT Index) noexcept override;
  HRESULT STDMETHODCALLTYPE CategoriesString(BSTR* sCategories) noexcept override;
  HRESULT STDMETHODCALLTYPE get_Changed(VARIANT_BOOL* bChanged) noexcept override;
  HRESULT STDMETHODCALLTYPE get_DateTime(DATE* dtDateTime) noexcept override;
  HRESULT STDMETHODCALLTYPE get_Folder(BSTR* sFolder) noexcept override;
  HRESULT STDMETHODCALLTYPE GetOutlookItem(IDispatch** oItem) noexcept override;
  HRESULT STDMETHODCALLTYPE get_ID(LONG* lID) noexcept override;
  HRESULT STDMETHODCALLTYPE get_ItemType(LONG* lItemType) noexcept override;
  HRESULT STDMETHODCALLTYPE get_MessageClass(BSTR* sMessageClass) noexcept override;
  HRESULT STDMETHODCALLTYPE MoveToCategory(_Category* Category) noexcept override;
  HRESULT STDMETHODCALLTYPE get_Subject(BSTR* sSubject) noexcept override;

  const std::shared_ptr<t4::OutlookItem>& Core() const noexcept { return core_; }

 private:
  std::shared_ptr<t4::OutlookItem> core_;
};

}  // namespace t4::com
