#pragma once

#include "com/ComObject.h"
#include "com/Tandrel4_h.h"

namespace t4::com {

// COM face of one category. Answers _Category (default) and _IChild.
// Not wired to the core's Category yet: every member answers E_NOTIMPL
// ("Not implemented yet: ...") until it is. The class is not creatable and
// no public member hands one out yet.
class CategoryObject final : public ComObject<CategoryObject, DispatchImpl<_Category>,
                                              DispatchImpl<_IChild>, IProvideClassInfo> {
 public:
  // A wrapper without core object (tests of the pending members).
  static HRESULT Create(REFIID iid, void** object) noexcept;

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

  // _IChild
  HRESULT STDMETHODCALLTYPE Init(LONG lParentPtr, VARIANT sKey) noexcept override;
  HRESULT STDMETHODCALLTYPE get_Key(BSTR* sKey) noexcept override;
  HRESULT STDMETHODCALLTYPE ResetParentPtr() noexcept override;

  // IProvideClassInfo
  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) noexcept override;
};

}  // namespace t4::com
