#pragma once

#include <memory>

#include "com/ChildImpl.h"
#include "com/ComObject.h"
#include "com/ProvideClassInfo.h"
#include "com/Tandrel4_h.h"
#include "model/Category.h"

namespace t4::com {

// How the COM layer recognises one of its own Category wrappers behind a
// _Category pointer a host hands back (OutlookItem.CategoriesAdd,
// MoveToCategory). Private: not in the type library, never marshalled.
struct ICategoryCore : public IUnknown {
  virtual std::shared_ptr<t4::Category> STDMETHODCALLTYPE CoreCategory() noexcept = 0;
};

}  // namespace t4::com

__CRT_UUID_DECL(t4::com::ICategoryCore, 0xe00cf648, 0xf763, 0x45a4, 0x8c, 0x7a, 0x13, 0x24, 0xcc,
                0xa7, 0x6d, 0xe8)

namespace t4::com {

// COM face of one t4::Category. Answers _Category (default) and _IChild.
// Handed out through the identity map (Wrap in Wrap.h) by Categories,
// the events and OutlookItem; never created by a client.
class CategoryObject final
    : public ComObject<CategoryObject, DispatchImpl<_Category>, ChildImpl<CategoryObject>,
                       ProvideClassInfo<CLSID_Category>, ICategoryCore> {
 public:
  using DefaultInterface = _Category;

  explicit CategoryObject(std::shared_ptr<t4::Category> core) noexcept;

  // _Category
  HRESULT STDMETHODCALLTYPE get_CategoryID(BSTR* sCategoryID) noexcept override;
  HRESULT STDMETHODCALLTYPE get_Changed(VARIANT_BOOL* bChanged) noexcept override;
  HRESULT STDMETHODCALLTYPE get_Color(LONG* lColor) noexcept override;
  HRESULT STDMETHODCALLTYPE put_Color(LONG lColor) noexcept override;
  HRESULT STDMETHODCALLTYPE get_ID(LONG* lID) noexcept override;
  HRESULT STDMETHODCALLTYPE put_InMasterlist(VARIANT_BOOL bInMasterlist) noexcept override;
  HRESULT STDMETHODCALLTYPE get_InMasterlist(VARIANT_BOOL* bInMasterlist) noexcept override;
  HRESULT STDMETHODCALLTYPE get_Member(VARIANT Index, VARIANT IgnoreFilter,
                                       _OutlookItem** oItem) noexcept override;
  HRESULT STDMETHODCALLTYPE get_MemberCount(VARIANT IgnoreFilter, LONG* lCount) noexcept override;
  HRESULT STDMETHODCALLTYPE get_Name(BSTR* sName) noexcept override;
  HRESULT STDMETHODCALLTYPE put_Name(BSTR sName) noexcept override;
  HRESULT STDMETHODCALLTYPE get_NewEnum(VARIANT IgnoreFilter, IUnknown** oEnum) noexcept override;
  HRESULT STDMETHODCALLTYPE get_ShortCut(LONG* lShortCut) noexcept override;
  HRESULT STDMETHODCALLTYPE put_ShortCut(LONG lShortCut) noexcept override;

  // ICategoryCore
  std::shared_ptr<t4::Category> STDMETHODCALLTYPE CoreCategory() noexcept override { return core_; }

  const std::shared_ptr<t4::Category>& Core() const noexcept { return core_; }

 private:
  std::shared_ptr<t4::Category> core_;
};

}  // namespace t4::com
