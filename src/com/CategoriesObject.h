#pragma once

#include <cstdint>
#include <memory>

#include "com/ChildImpl.h"
#include "com/ComObject.h"
#include "com/EventSource.h"
#include "com/ProvideClassInfo2.h"
#include "com/Tandrel4_h.h"
#include "model/Categories.h"

namespace t4::com {

// COM face of t4::Categories. Answers _Categories (default) and _IChild and
// offers the __Categories events through a connection point; handed out by
// Application.Categories through the identity map.
//
// Events: while the wrapper lives it is one subscriber of the core
// collection (an EventBridge). The bridge points back at the wrapper without
// a reference, so the core never keeps the wrapper alive; the wrapper
// detaches and unsubscribes the bridge when it dies. The bridge turns each
// core event into IDispatch::Invoke on every advised sink, with the
// identity-mapped wrappers of the objects as arguments.
class CategoriesObject final
    : public ComObject<CategoriesObject, DispatchImpl<_Categories>, ChildImpl<CategoriesObject>,
                       EventSource<DIID___Categories>,
                       ProvideClassInfo2<CLSID_Categories, &DIID___Categories>> {
 public:
  using DefaultInterface = _Categories;

  // Subscribes to the core collection's events; throws std::bad_alloc.
  explicit CategoriesObject(std::shared_ptr<t4::Categories> core);
  ~CategoriesObject();

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
  get_FilterMasterlist(::cmFilterMasterlist* lFilterMasterlist) noexcept override;
  HRESULT STDMETHODCALLTYPE get_FilterMember(::cmFilterMember* lFilterMember) noexcept override;
  HRESULT STDMETHODCALLTYPE get_FilterTypes(LONG* lFilterTypes) noexcept override;
  HRESULT STDMETHODCALLTYPE get_FireItemEvents(VARIANT_BOOL* bFire) noexcept override;
  HRESULT STDMETHODCALLTYPE put_FireItemEvents(VARIANT_BOOL bFire) noexcept override;
  HRESULT STDMETHODCALLTYPE get_FireMemberEvents(VARIANT_BOOL* bFire) noexcept override;
  HRESULT STDMETHODCALLTYPE put_FireMemberEvents(VARIANT_BOOL bFire) noexcept override;
  HRESULT STDMETHODCALLTYPE NameExist(BSTR sName, VARIANT* Found,
                                      VARIANT_BOOL* bExist) noexcept override;
  HRESULT STDMETHODCALLTYPE get_NewEnum(IUnknown** oEnum) noexcept override;
  HRESULT STDMETHODCALLTYPE SetFilter(LONG FilterCategories, LONG FilterTypes,
                                      ::cmFilterMember FilterMember,
                                      ::cmFilterMasterlist FilterMasterlist) noexcept override;

  const std::shared_ptr<t4::Categories>& Core() const noexcept { return core_; }

 private:
  class EventBridge;

  std::shared_ptr<t4::Categories> core_;
  std::shared_ptr<EventBridge> bridge_;
  int32_t cookie_ = 0;
};

}  // namespace t4::com
