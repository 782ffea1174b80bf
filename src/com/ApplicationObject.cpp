#include "com/ApplicationObject.h"

#include <new>

#include "com/ErrorBoundary.h"
#include "com/HostFolderList.h"
#include "com/LanguageSupport.h"
#include "com/Variants.h"
#include "com/Wrap.h"
#include "model/Categories.h"
#include "model/OutlookItems.h"
#include "platform/win32/ComPtr.h"
#include "platform/win32/Win32ClientApp.h"
#include "session/IApplicationEvents.h"

namespace t4::com {

namespace {

const IID& kItf = IID__Application;
const IID& kLanguageItf = IID__ILanguage;

// Dispatch id of Progress in the source interface __Application.
constexpr DISPID kProgress = 1;

}  // namespace

// The core subscriber of one wrapper. The core may hold it longer than the
// wrapper lives: `owner_` is cleared when the wrapper dies, and an event
// that finds it cleared goes nowhere.
class ApplicationObject::EventBridge final : public IApplicationEvents {
 public:
  explicit EventBridge(ApplicationObject* owner) noexcept : owner_(owner) {}
  void Detach() noexcept { owner_ = nullptr; }

  // Progress(lValue, lMax, bCancel): the sinks see bCancel by reference and
  // what the last of them left there comes back to the core.
  void Progress(int32_t value, int32_t max, bool& cancel) override {
    if (owner_ == nullptr || !owner_->HasSinks()) return;
    VARIANT_BOOL flag = ToVariantBool(cancel);
    VARIANT args[3];  // last first, as IDispatch takes them
    V_VT(&args[0]) = VT_BYREF | VT_BOOL;
    V_BOOLREF(&args[0]) = &flag;
    V_VT(&args[1]) = VT_I4;
    V_I4(&args[1]) = max;
    V_VT(&args[2]) = VT_I4;
    V_I4(&args[2]) = value;
    DISPPARAMS params = {args, nullptr, 3, 0};
    owner_->RaiseEvent(kProgress, &params);
    cancel = flag != VARIANT_FALSE;
  }

 private:
  ApplicationObject* owner_;
};

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

ApplicationObject::ApplicationObject(std::shared_ptr<Application> core)
    : core_(std::move(core)), bridge_(std::make_shared<EventBridge>(this)) {}

ApplicationObject::~ApplicationObject() {
  bridge_->Detach();
  if (cookie_ == 0) return;
  try {
    core_->Unadvise(cookie_);
  } catch (...) {
    // The bridge is detached; an event it still gets goes nowhere.
  }
}

void ApplicationObject::ListenWhenHeard() {
  // Without a sink nobody hears Progress, and the reader need not call out
  // once per item for nothing.
  if (cookie_ != 0 || !HasSinks()) return;
  cookie_ = core_->Advise(bridge_);
}

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
    core_->Initialize(olApp != nullptr ? std::make_shared<win32::Win32ClientApp>(
                                             win32::ComPtr<IDispatch>::CopyFrom(olApp))
                                       : nullptr);
  });
}

HRESULT ApplicationObject::get_OutlookItems(_OutlookItems** oOutlookItems) noexcept {
  if (oOutlookItems == nullptr) return E_POINTER;
  *oOutlookItems = nullptr;
  return Boundary(kItf, [&] { *oOutlookItems = Wrap(core_->OutlookItems()); });
}

HRESULT ApplicationObject::ReadItems(VARIANT* FolderDataList) noexcept {
  // Empty, Nothing or a left-out list reach the core as no list, which
  // resets and reads nothing.
  return Boundary(kItf, [&] {
    std::shared_ptr<IFolderList> folders =
        FolderDataList != nullptr ? HostFolderList::From(*FolderDataList) : nullptr;
    ListenWhenHeard();
    core_->ReadItems(std::move(folders));
  });
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

}  // namespace t4::com
