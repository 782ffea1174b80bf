#include "com/CategoriesObject.h"

#include "com/Enumerator.h"
#include "com/ErrorBoundary.h"
#include "com/Variants.h"
#include "com/Wrap.h"
#include "model/Category.h"
#include "model/OutlookItem.h"
#include "platform/win32/ComPtr.h"

namespace t4::com {

namespace {

const IID& kItf = IID__Categories;

// Dispatch ids of the source interface __Categories (Tandrel4.idl).
enum : DISPID {
  kItemAdd = 1,
  kItemChange = 2,
  kItemRemove = 3,
  kMemberAdd = 4,
  kMemberRemove = 5,
};

// An event argument: the identity-mapped wrapper of `core` as VT_DISPATCH.
template <class Core>
win32::Variant WrapperArgument(const std::shared_ptr<Core>& core) {
  return win32::Variant::Object(win32::ComPtr<IDispatch>::Attach(Wrap(core)));
}

}  // namespace

// The core subscriber of one wrapper. It lives as long as the core holds it
// (also while an event runs, since the core raises to a copy of its list),
// which may be longer than the wrapper: `owner_` is cleared when the wrapper
// dies, and an event that finds it cleared goes nowhere.
class CategoriesObject::EventBridge final : public t4::ICategoriesEvents {
 public:
  explicit EventBridge(CategoriesObject* owner) noexcept : owner_(owner) {}
  void Detach() noexcept { owner_ = nullptr; }

  void ItemAdd(const std::shared_ptr<t4::Category>& item) override { RaiseObjects(kItemAdd, item); }
  void ItemChange(const std::shared_ptr<t4::Category>& item) override {
    RaiseObjects(kItemChange, item);
  }
  void ItemRemove(const std::u16string& key) override {
    if (!Listened()) return;
    const win32::Variant arg = win32::Variant::Text(key);
    VARIANT plain = arg.Raw();  // borrowed; `arg` owns the string
    Raise(kItemRemove, &plain, 1);
  }
  void MemberAdd(const std::shared_ptr<t4::Category>& item,
                 const std::shared_ptr<t4::OutlookItem>& member) override {
    RaiseObjects(kMemberAdd, item, member);
  }
  void MemberRemove(const std::shared_ptr<t4::Category>& item,
                    const std::shared_ptr<t4::OutlookItem>& member) override {
    RaiseObjects(kMemberRemove, item, member);
  }

 private:
  // Nobody advised: no wrapper is made for an event no one hears (reading
  // and replays raise many).
  bool Listened() const noexcept { return owner_ != nullptr && owner_->HasSinks(); }

  // (Item As Category) or (Item As Category, Member As OutlookItem).
  void RaiseObjects(DISPID id, const std::shared_ptr<t4::Category>& item,
                    const std::shared_ptr<t4::OutlookItem>& member = nullptr) {
    if (!Listened()) return;
    // IDispatch takes the arguments last first.
    win32::Variant args[2];
    UINT count = 0;
    if (member) args[count++] = WrapperArgument(member);
    args[count++] = WrapperArgument(item);
    VARIANT plain[2] = {args[0].Raw(), args[1].Raw()};  // borrowed; `args` own the objects
    Raise(id, plain, count);
  }

  void Raise(DISPID id, VARIANT* args, UINT count) {
    DISPPARAMS params = {args, nullptr, count, 0};
    owner_->RaiseEvent(id, &params);
  }

  CategoriesObject* owner_;
};

CategoriesObject::CategoriesObject(std::shared_ptr<t4::Categories> core)
    : core_(std::move(core)), bridge_(std::make_shared<EventBridge>(this)) {
  cookie_ = core_->Advise(bridge_);
}

CategoriesObject::~CategoriesObject() {
  bridge_->Detach();
  core_->Unadvise(cookie_);
}

// _Categories -------------------------------------------------------------

HRESULT CategoriesObject::Add(BSTR sName, VARIANT_BOOL bInMasterlist, VARIANT sCategoryID,
                              VARIANT lColor, VARIANT lShortCut, _Category** oCategory) noexcept {
  if (oCategory == nullptr) return E_POINTER;
  *oCategory = nullptr;
  return Boundary(kItf, [&] {
    // Left-out optional arguments count as "" and 0. The core may
    // transliterate the name in place; an [in] BSTR cannot carry that back.
    std::u16string name = FromBstr(sName);
    const std::u16string categoryId = OptionalText(sCategoryID, u"");
    const int32_t color = OptionalLong(lColor, 0);
    const int32_t shortCut = OptionalLong(lShortCut, 0);
    *oCategory =
        Wrap(core_->Add(name, FromVariantBool(bInMasterlist), categoryId, color, shortCut));
  });
}

HRESULT CategoriesObject::get_Changed(VARIANT_BOOL* bChanged) noexcept {
  if (bChanged == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *bChanged = ToVariantBool(core_->Changed()); });
}

HRESULT CategoriesObject::get_Count(VARIANT IgnoreFilter, LONG* lCount) noexcept {
  if (lCount == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *lCount = core_->Count(OptionalBool(IgnoreFilter, false)); });
}

HRESULT CategoriesObject::CountDetails(VARIANT* ItemsInMasterlist,
                                       VARIANT* ItemsNotInMasterlist) noexcept {
  return Boundary(kItf, [&] {
    int32_t in = 0;
    int32_t notIn = 0;
    core_->CountDetails(in, notIn);
    AssignByRef(ItemsInMasterlist, in);
    AssignByRef(ItemsNotInMasterlist, notIn);
  });
}

HRESULT CategoriesObject::get_CountFilteredMember(LONG* lCount) noexcept {
  if (lCount == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *lCount = core_->CountFilteredMember(); });
}

HRESULT CategoriesObject::get_CountWithoutDefault(VARIANT IgnoreFilter, LONG* lCount) noexcept {
  if (lCount == nullptr) return E_POINTER;
  return Boundary(kItf,
                  [&] { *lCount = core_->CountWithoutDefault(OptionalBool(IgnoreFilter, false)); });
}

HRESULT CategoriesObject::get_DefaultCategory(VARIANT IgnoreFilter,
                                              _Category** oCategory) noexcept {
  if (oCategory == nullptr) return E_POINTER;
  *oCategory = nullptr;
  return Boundary(
      kItf, [&] { *oCategory = Wrap(core_->DefaultCategory(OptionalBool(IgnoreFilter, false))); });
}

HRESULT CategoriesObject::Delete(VARIANT Index) noexcept {
  return Boundary(kItf, [&] {
    // An index that names nothing deletes nothing, as an unknown key does.
    if (const auto index = IndexOf(Index)) core_->Delete(*index);
  });
}

HRESULT CategoriesObject::ExportMasterlist(BSTR File) noexcept {
  return Boundary(kItf, [&] { core_->ExportMasterlist(FromBstr(File)); });
}

HRESULT CategoriesObject::ImportMasterlist(BSTR File) noexcept {
  return Boundary(kItf, [&] { core_->ImportMasterlist(FromBstr(File)); });
}

HRESULT CategoriesObject::get_Item(VARIANT Index, VARIANT IgnoreFilter,
                                   _Category** oCategory) noexcept {
  if (oCategory == nullptr) return E_POINTER;
  *oCategory = nullptr;
  return Boundary(kItf, [&] {
    const bool ignoreFilter = OptionalBool(IgnoreFilter, false);
    if (const auto index = IndexOf(Index)) *oCategory = Wrap(core_->Item(*index, ignoreFilter));
  });
}

HRESULT CategoriesObject::get_FilterCategories(LONG* lFilterCategories) noexcept {
  if (lFilterCategories == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *lFilterCategories = core_->FilterCategories(); });
}

HRESULT CategoriesObject::get_FilterMasterlist(::cmFilterMasterlist* lFilterMasterlist) noexcept {
  if (lFilterMasterlist == nullptr) return E_POINTER;
  return Boundary(kItf, [&] {
    *lFilterMasterlist = static_cast<::cmFilterMasterlist>(core_->FilterMasterlist());
  });
}

HRESULT CategoriesObject::get_FilterMember(::cmFilterMember* lFilterMember) noexcept {
  if (lFilterMember == nullptr) return E_POINTER;
  return Boundary(kItf,
                  [&] { *lFilterMember = static_cast<::cmFilterMember>(core_->FilterMember()); });
}

HRESULT CategoriesObject::get_FilterTypes(LONG* lFilterTypes) noexcept {
  if (lFilterTypes == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *lFilterTypes = core_->FilterTypes(); });
}

HRESULT CategoriesObject::get_FireItemEvents(VARIANT_BOOL* bFire) noexcept {
  if (bFire == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *bFire = ToVariantBool(core_->FireItemEvents()); });
}

HRESULT CategoriesObject::put_FireItemEvents(VARIANT_BOOL bFire) noexcept {
  return Boundary(kItf, [&] { core_->SetFireItemEvents(FromVariantBool(bFire)); });
}

HRESULT CategoriesObject::get_FireMemberEvents(VARIANT_BOOL* bFire) noexcept {
  if (bFire == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *bFire = ToVariantBool(core_->FireMemberEvents()); });
}

HRESULT CategoriesObject::put_FireMemberEvents(VARIANT_BOOL bFire) noexcept {
  return Boundary(kItf, [&] { core_->SetFireMemberEvents(FromVariantBool(bFire)); });
}

HRESULT CategoriesObject::NameExist(BSTR sName, VARIANT* Found, VARIANT_BOOL* bExist) noexcept {
  if (bExist == nullptr) return E_POINTER;
  *bExist = VARIANT_FALSE;
  return Boundary(kItf, [&] {
    std::shared_ptr<t4::Category> found;
    const bool exists = core_->NameExist(FromBstr(sName), found);
    // Found is optional; when it is given it receives the category or
    // Nothing, whatever it held before.
    if (Found != nullptr && !IsMissing(*Found)) {
      const auto wrapper = win32::ComPtr<_Category>::Attach(exists ? Wrap(found) : nullptr);
      AssignByRef(Found, static_cast<IDispatch*>(wrapper.Get()));
    }
    *bExist = ToVariantBool(exists);
  });
}

HRESULT CategoriesObject::get_NewEnum(IUnknown** oEnum) noexcept {
  if (oEnum == nullptr) return E_POINTER;
  *oEnum = nullptr;
  return Boundary(kItf,
                  [&] { return SnapshotEnum<t4::Category>::Create(core_->Enumerate(), oEnum); });
}

HRESULT CategoriesObject::SetFilter(LONG FilterCategories, LONG FilterTypes,
                                    ::cmFilterMember FilterMember,
                                    ::cmFilterMasterlist FilterMasterlist) noexcept {
  return Boundary(kItf, [&] {
    core_->SetFilter(FilterCategories, FilterTypes, static_cast<int32_t>(FilterMember),
                     static_cast<int32_t>(FilterMasterlist));
  });
}

}  // namespace t4::com
