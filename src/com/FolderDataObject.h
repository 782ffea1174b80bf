#pragma once

#include <memory>

#include "com/ComObject.h"
#include "com/Tandrel4_h.h"
#include "session/FolderData.h"

namespace t4::com {

// COM face of t4::FolderData: the creatable record of one folder that a
// host hands to Application.ReadItems. Answers _FolderData (default) and
// _ILanguage.
class FolderDataObject final : public ComObject<FolderDataObject, DispatchImpl<_FolderData>,
                                                DispatchImpl<_ILanguage>, IProvideClassInfo2> {
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

  // IProvideClassInfo2
  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) noexcept override;
  HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* guid) noexcept override;

  // The core object (ReadItems takes the folders of the list through it).
  const std::shared_ptr<FolderData>& Core() const noexcept { return core_; }

 private:
  std::shared_ptr<FolderData> core_;
};

}  // namespace t4::com
