#include "com/FolderDataObject.h"

#include "com/ErrorBoundary.h"
#include "com/LanguageSupport.h"
#include "com/Variants.h"

namespace t4::com {

namespace {

const IID& kItf = IID__FolderData;
const IID& kLanguageItf = IID__ILanguage;

// The text getters share one shape: a BSTR copy of a core string.
template <class Getter>
HRESULT GetText(const FolderData& core, BSTR* out, Getter getter) noexcept {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  return Boundary(kItf, [&] { *out = ToBstr((core.*getter)()); });
}

}  // namespace

HRESULT FolderDataObject::Create(REFIID iid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  return Boundary(kItf, [&] {
    std::shared_ptr<FolderData> core = FolderData::Create();
    IUnknown* wrapper = IdentityMap::FindOrCreate(core.get(), [&]() -> IUnknown* {
      auto* created = new FolderDataObject(core);
      created->BindIdentity(core.get());
      return created->Identity();
    });
    const HRESULT hr = wrapper->QueryInterface(iid, object);
    wrapper->Release();
    return hr;
  });
}

FolderDataObject::FolderDataObject(std::shared_ptr<FolderData> core) noexcept
    : core_(std::move(core)) {}

// _FolderData -------------------------------------------------------------

HRESULT FolderDataObject::ToILanguage(_ILanguage** oLanguage) noexcept {
  if (oLanguage == nullptr) return E_POINTER;
  *oLanguage = static_cast<_ILanguage*>(this);
  AddRef();
  return S_OK;
}

HRESULT FolderDataObject::get_EntryID(BSTR* sEntryID) noexcept {
  return GetText(*core_, sEntryID, &FolderData::EntryID);
}

HRESULT FolderDataObject::get_HasChilds(VARIANT_BOOL* bHasChilds) noexcept {
  if (bHasChilds == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *bHasChilds = ToVariantBool(core_->HasChilds()); });
}

HRESULT FolderDataObject::Init(BSTR EntryID, BSTR StoreID, BSTR Name, LONG ItemsCount,
                               VARIANT_BOOL HasChilds) noexcept {
  return Boundary(kItf, [&] {
    core_->Init(FromBstr(EntryID), FromBstr(StoreID), FromBstr(Name), ItemsCount,
                FromVariantBool(HasChilds));
  });
}

HRESULT FolderDataObject::get_ItemsCount(LONG* lItemsCount) noexcept {
  if (lItemsCount == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *lItemsCount = core_->ItemsCount(); });
}

HRESULT FolderDataObject::get_Name(BSTR* sName) noexcept {
  return GetText(*core_, sName, &FolderData::Name);
}

HRESULT FolderDataObject::get_StoreID(BSTR* sStoreID) noexcept {
  return GetText(*core_, sStoreID, &FolderData::StoreID);
}

// _ILanguage --------------------------------------------------------------

HRESULT FolderDataObject::get_LanguageID(LONG* lLanguageID) noexcept {
  return LanguageSupport::GetLanguageID(kLanguageItf, *core_, lLanguageID);
}

HRESULT FolderDataObject::put_LanguageID(LONG lLanguageID) noexcept {
  return LanguageSupport::PutLanguageID(kLanguageItf, *core_, lLanguageID);
}

HRESULT FolderDataObject::get_SupportedLanguages(IDispatch** oLanguages) noexcept {
  return LanguageSupport::GetSupportedLanguages(kLanguageItf, *core_, oLanguages);
}

}  // namespace t4::com
