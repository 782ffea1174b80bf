#pragma once

#include <memory>

#include "com/ComObject.h"
#include "com/ProvideClassInfo2.h"
#include "com/Tandrel4_h.h"
#include "session/FolderData.h"

namespace t4::com {

// How the COM layer recognises one of its own FolderData wrappers among the
// objects of a folder list a host hands to ReadItems. Private: not in the
// type library, never marshalled.
struct IFolderDataCore : public IUnknown {
  virtual std::shared_ptr<FolderData> STDMETHODCALLTYPE CoreFolderData() noexcept = 0;
};

}  // namespace t4::com

__CRT_UUID_DECL(t4::com::IFolderDataCore, 0x3b7e2d41, 0x9c58, 0x4f0a, 0xa6, 0x13, 0x5e, 0x8d, 0x21,
                0xc4, 0x7f, 0x90)

namespace t4::com {

// COM face of t4::FolderData: the creatable record of one folder that a
// host hands to Application.ReadItems. Answers _FolderData (default) and
// _ILanguage.
class FolderDataObject final
    : public ComObject<FolderDataObject, DispatchImpl<_FolderData>, DispatchImpl<_ILanguage>,
                       ProvideClassInfo2<CLSID_FolderData>, IFolderDataCore> {
 public:
  static HRESULT Create(REFIID iid, void** object) noexcept;

  explicit FolderDataObject(std::shared_ptr<FolderData> core) noexcept;

  // _FolderData
  HRESULT STDMETHODCALLTYPE ToILanguage(_ILanguage** oLanguage) noexcept override;
  HRESULT STDMETHODCALLTYPE get_EntryID(BSTR* sEntryID) noexcept override;
  HRESULT STDMETHODCALLTYPE get_HasChilds(VARIANT_BOOL* bHasChilds) noexcept override;
  HRESULT STDMETHODCALLTYPE Init(BSTR EntryID, BSTR StoreID, BSTR Name, LONG ItemsCount,
                                 VARIANT_BOOL HasChilds) noexcept override;
  HRESULT STDMETHODCALLTYPE get_ItemsCount(LONG* lItemsCount) noexcept override;
  HRESULT STDMETHODCALLTYPE get_Name(BSTR* sName) noexcept override;
  HRESULT STDMETHODCALLTYPE get_StoreID(BSTR* sStoreID) noexcept override;

  // _ILanguage
  HRESULT STDMETHODCALLTYPE get_LanguageID(LONG* lLanguageID) noexcept override;
  HRESULT STDMETHODCALLTYPE put_LanguageID(LONG lLanguageID) noexcept override;
  HRESULT STDMETHODCALLTYPE get_SupportedLanguages(IDispatch** oLanguages) noexcept override;

  // IFolderDataCore
  std::shared_ptr<FolderData> STDMETHODCALLTYPE CoreFolderData() noexcept override { return core_; }

  // The core object (ReadItems takes the folders of the list through it).
  const std::shared_ptr<FolderData>& Core() const noexcept { return core_; }

 private:
  std::shared_ptr<FolderData> core_;
};

}  // namespace t4::com
