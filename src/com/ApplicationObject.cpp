#include "com/ApplicationObject.h"

#include <new>

#include "com/ClassInfo.h"
#include "com/ErrorBoundary.h"
#include "com/LanguageSupport.h"
#include "com/Variants.h"
#include "com/Wrappers.h"
#include "model/Categories.h"
#include "model/OutlookItems.h"
#include "platform/win32/Win32ClientApp.h"

namespace t4::com {

namespace {

const IID& kItf = IID__Application;
const IID& kLanguageItf = IID__ILanguage;

}  // namespace

HRESULT ApplicationObject::Create(REFIID iid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  return Boundary(kItf, [&] {
    std::shared_ptr<Application> core = Application::Create();
    IUnknown* wrapper = IdentityMap::FindOrCreate(core.get(), [&]() -> IUnknown* {
      auto* created = new ApplicationObject(core);
      created->BindIdentity(core.get());
      return created->Identity();
    });
    const HRESULT hr = wrapper->QueryInterface(iid, object);
    wrapper->Release();
    return hr;
  });
}

ApplicationObject::ApplicationObject(std::shared_ptr<Application> core) noexcept
    : core_(std::move(core)),
      events_(static_cast<IConnectionPointContainer*>(this), DIID___Application) {}

// _Application ------------------------------------------------------------

HRESULT ApplicationObject::ToILanguage(_ILanguage** oLanguage) noexcept {
  if (oLanguage == nullptr) return E_POINTER;
  *oLanguage = static_cast<_ILanguage*>(this);
  AddRef();
  return S_OK;
}

HRESULT ApplicationObject::get_BatchMode(VARIANT_BOOL* bBatchMode) noexcept {
  if (bBatchMode == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *bBatchMode = ToVariantBool(core_->BatchMode()); });
}

HRESULT ApplicationObject::put_BatchMode(VARIANT_BOOL bBatchMode) noexcept {
  return Boundary(kItf, [&] { core_->SetBatchMode(FromVariantBool(bBatchMode)); });
}

HRESULT ApplicationObject::get_Categories(_Categories** oCategories) noexcept {
  if (oCategories == nullptr) return E_POINTER;
  *oCategories = nullptr;
  // Nothing once terminated.
  return Boundary(kItf, [&] { *oCategories = Wrap(core_->Categories()); });
}

HRESULT ApplicationObject::get_Changed(VARIANT_BOOL* bChanged) noexcept {
  if (bChanged == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *bChanged = ToVariantBool(core_->Changed()); });
}

HRESULT ApplicationObject::Initialize(IDispatch* olApp) noexcept {
  // Nothing goes to the core as no client, which raises 91 there.
  return Boundary(kItf, [&] {
    core_->Initialize(olApp != nullptr ? std::make_shared<win32::Win32ClientApp>(olApp) : nullptr);
  });
}

HRESULT ApplicationObject::get_OutlookItems(_OutlookItems** oOutlookItems) noexcept {
  if (oOutlookItems == nullptr) return E_POINTER;
  *oOutlookItems = nullptr;
  return Boundary(kItf, [&] { *oOutlookItems = Wrap(core_->OutlookItems()); });
}

HRESULT ApplicationObject::ReadItems(VARIANT*) noexcept {
  return NotImplemented(kItf, u"Application.ReadItems");
}

HRESULT ApplicationObject::ReadMasterlist() noexcept {
  return Boundary(kItf, [&] { core_->ReadMasterlist(); });
}

HRESULT ApplicationObject::Redo() noexcept {
  return Boundary(kItf, [&] { core_->Redo(); });
}

HRESULT ApplicationObject::get_RedoIsPossible(VARIANT_BOOL* bPossible) noexcept {
  if (bPossible == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *bPossible = ToVariantBool(core_->RedoIsPossible()); });
}

HRESULT ApplicationObject::get_RulesSupported(VARIANT_BOOL* bSupported) noexcept {
  if (bSupported == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *bSupported = ToVariantBool(core_->RulesSupported()); });
}

HRESULT ApplicationObject::SaveChanges() noexcept {
  return Boundary(kItf, [&] { core_->SaveChanges(); });
}

HRESULT ApplicationObject::Terminate() noexcept {
  // Wrappers the host still holds keep their core objects; the core has
  // unlinked them, so edits through them raise 91 and getters go on working.
  return Boundary(kItf, [&] { core_->Terminate(); });
}

HRESULT ApplicationObject::Undo() noexcept {
  return Boundary(kItf, [&] { core_->Undo(); });
}

HRESULT ApplicationObject::get_UndoIsPossible(VARIANT_BOOL* bPossible) noexcept {
  if (bPossible == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *bPossible = ToVariantBool(core_->UndoIsPossible()); });
}

// _ILanguage --------------------------------------------------------------

HRESULT ApplicationObject::get_LanguageID(LONG* lLanguageID) noexcept {
  return LanguageSupport::GetLanguageID(kLanguageItf, *core_, lLanguageID);
}

HRESULT ApplicationObject::put_LanguageID(LONG lLanguageID) noexcept {
  return LanguageSupport::PutLanguageID(kLanguageItf, *core_, lLanguageID);
}

HRESULT ApplicationObject::get_SupportedLanguages(IDispatch** oLanguages) noexcept {
  return LanguageSupport::GetSupportedLanguages(kLanguageItf, *core_, oLanguages);
}

// IConnectionPointContainer ----------------------------------------------

HRESULT ApplicationObject::EnumConnectionPoints(IEnumConnectionPoints** points) noexcept {
  IConnectionPoint* all[] = {&events_};
  return EnumerateConnectionPoints(all, 1, points);
}

HRESULT ApplicationObject::FindConnectionPoint(REFIID riid, IConnectionPoint** point) noexcept {
  if (point == nullptr) return E_POINTER;
  *point = nullptr;
  if (!IsEqualIID(riid, events_.Source())) return CONNECT_E_NOCONNECTION;
  events_.AddRef();
  *point = &events_;
  return S_OK;
}

// IProvideClassInfo2 -----------------------------------------------------

HRESULT ApplicationObject::GetClassInfo(ITypeInfo** info) noexcept {
  return ClassTypeInfo(CLSID_Application, info);
}

HRESULT ApplicationObject::GetGUID(DWORD kind, GUID* guid) noexcept {
  return DefaultSourceGuid(&DIID___Application, kind, guid);
}

}  // namespace t4::com
