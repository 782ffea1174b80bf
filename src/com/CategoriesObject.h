#pragma once

#include "com/ComObject.h"
#include "com/ConnectionPoint.h"
#include "com/Tandrel4_h.h"

namespace t4::com {

// COM face of the collection of categories of one Application. Answers _Categories (default) and
// _IChild and offers the __Categories events through a connection point.
// Not wired to the core's Categories yet: every member answers E_NOTIMPL
// ("Not implemented yet: ...") until it is. The class is not creatable and
// no public member hands one out yet.
class CategoriesObject final
    : public ComObject<CategoriesObject, DispatchImpl<_Categories>, DispatchImpl<_IChild>,
                       IConnectionPointContainer, IProvideClassInfo2> {
 public:
  // A wrapper without core object (tests of the pending members).
  static HRESULT Create(REFIID iid, void** object) noexcept;

  CategoriesObject() noexcept;

  // _Categories
  HRESULT STDMETHODCALLTYPE Add(BSTR sName, VARIANT_BOOL bInMasterlist, VARIANT sCategoryID,
                                VARIANT lColor, VARIANT lShortCut,
                                _Category** oCategory) noexcept override;
  HRESULT STDMETHODCALLTYPE get_Changed(VARIANT_BOOL* bChanged) noexcept override;
  HRESULT STDMETHODCALLTYPE get_Count(VARIANT IgnoreFilter, LONG* lCount) noexcept override;
  HRESULT STDMETHODCALLTYPE CountDetails(VARIANT* ItemsInMasterlist,
                                         VARIANT* ItemsNotInMasterlist) noexcept override;
  HRESULT STDMETHODCALLTYPE get_CountFilteredMember(LONG* lCount) noexcept override;
  HRESULT STDMETHODCALLTYPE get_CountWithoutDefault(VARIANT IgnoreFilter,
                                                    LONG* lCount) noexcept override;
  HRESULT STDMETHODCALLTYPE get_DefaultCategory(VARIANT IgnoreFilter,
                                                _Category** oCategory) noexcept override;
  HRESULT STDMETHODCALLTYPE Delete(VARIANT Index) noexcept override;
  HRESULT STDMETHODCALLTYPE ExportMasterlist(BSTR File) noexcept override;
  HRESULT STDMETHODCALLTYPE ImportMasterlist(BSTR File) noexcept override;
  HRESULT STDMETHODCALLTYPE get_Item(VARIANT Index, VARIANT IgnoreFilter,
                                     _Category** oCategory) noexcept override;
  HRESULT STDMETHODCALLTYPE get_FilterCategories(LONG* lFilterCategories) noexcept override;
  HRESULT STDMETHODCALLTYPE
  get_FilterMasterlist(cmFilterMasterlist* lFilterMasterlist) noexcept override;
  HRESULT STDMETHODCALLTYPE get_FilterMember(cmFilterMember* lFilterMember) noexcept override;
  HRESULT STDMETHODCALLTYPE get_FilterTypes(LONG* lFilterTypes) noexcept override;
  HRESULT STDMETHODCALLTYPE get_FireItemEvents(VARIANT_BOOL* bFire) noexcept override;
  HRESULT STDMETHODCALLTYPE put_FireItemEvents(VARIANT_BOOL bFire) noexcept override;
  HRESULT STDMETHODCALLTYPE get_FireMemberEvents(VARIANT_BOOL* bFire) noexcept override;
  HRESULT STDMETHODCALLTYPE put_FireMemberEvents(VARIANT_BOOL bFire) noexcept override;
  HRESULT STDMETHODCALLTYPE NameExist(BSTR sName, VARIANT* Found,
                                      VARIANT_BOOL* bExist) noexcept override;
  HRESULT STDMETHODCALLTYPE get_NewEnum(IUnknown** oEnum) noexcept override;
  HRESULT STDMETHODCALLTYPE SetFilter(LONG FilterCategories, LONG FilterTypes,
                                      cmFilterMember FilterMember,
                                      cmFilterMasterlist FilterMasterlist) noexcept override;

  // _IChild
  HRESULT STDMETHODCALLTYPE Init(LONG lParentPtr, VARIANT sKey) noexcept override;
  HRESULT STDMETHODCALLTYPE get_Key(BSTR* sKey) noexcept override;
  HRESULT STDMETHODCALLTYPE ResetParentPtr() noexcept override;

  // IConnectionPointContainer
  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) noexcept override;
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID riid,
                                                IConnectionPoint** point) noexcept override;

  // IProvideClassInfo2
  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) noexcept override;
  HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* guid) noexcept override;

 private:
  ConnectionPoint events_;
};

}  // namespace t4::com
