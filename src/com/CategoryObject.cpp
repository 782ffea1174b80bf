#include "com/CategoryObject.h"

#include "com/Enumerator.h"
#include "com/ErrorBoundary.h"
#include "com/Variants.h"
#include "com/Wrap.h"
#include "model/OutlookItem.h"

namespace t4::com {

namespace {

const IID& kItf = IID__Category;

}  // namespace

CategoryObject::CategoryObject(std::shared_ptr<t4::Category> core) noexcept
    : core_(std::move(core)) {}

// _Category ---------------------------------------------------------------

HRESULT CategoryObject::get_CategoryID(BSTR* sCategoryID) noexcept {
  if (sCategoryID == nullptr) return E_POINTER;
  *sCategoryID = nullptr;
  return Boundary(kItf, [&] { *sCategoryID = ToBstr(core_->CategoryID()); });
}

HRESULT CategoryObject::get_Changed(VARIANT_BOOL* bChanged) noexcept {
  if (bChanged == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *bChanged = ToVariantBool(core_->Changed()); });
}

HRESULT CategoryObject::get_Color(LONG* lColor) noexcept {
  if (lColor == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *lColor = core_->Color(); });
}

HRESULT CategoryObject::put_Color(LONG lColor) noexcept {
  return Boundary(kItf, [&] { core_->SetColor(lColor); });
}

HRESULT CategoryObject::get_ID(LONG* lID) noexcept {
  if (lID == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *lID = core_->ID(); });
}

HRESULT CategoryObject::put_InMasterlist(VARIANT_BOOL bInMasterlist) noexcept {
  return Boundary(kItf, [&] { core_->SetInMasterlist(FromVariantBool(bInMasterlist)); });
}

HRESULT CategoryObject::get_InMasterlist(VARIANT_BOOL* bInMasterlist) noexcept {
  if (bInMasterlist == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *bInMasterlist = ToVariantBool(core_->InMasterlist()); });
}

HRESULT CategoryObject::get_Member(VARIANT Index, VARIANT IgnoreFilter,
                                   _OutlookItem** oItem) noexcept {
  if (oItem == nullptr) return E_POINTER;
  *oItem = nullptr;
  return Boundary(kItf, [&] {
    const bool ignoreFilter = OptionalBool(IgnoreFilter, false);
    const auto index = IndexOf(Index);
    if (index) *oItem = Wrap(core_->Member(*index, ignoreFilter));
  });
}

HRESULT CategoryObject::get_MemberCount(VARIANT IgnoreFilter, LONG* lCount) noexcept {
  if (lCount == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *lCount = core_->MemberCount(OptionalBool(IgnoreFilter, false)); });
}

HRESULT CategoryObject::get_Name(BSTR* sName) noexcept {
  if (sName == nullptr) return E_POINTER;
  *sName = nullptr;
  return Boundary(kItf, [&] { *sName = ToBstr(core_->Name()); });
}

HRESULT CategoryObject::put_Name(BSTR sName) noexcept {
  // The core may transliterate the name in place; an [in] BSTR cannot
  // carry that back, so it works on a copy.
  return Boundary(kItf, [&] {
    std::u16string name = FromBstr(sName);
    core_->SetName(name);
  });
}

HRESULT CategoryObject::get_NewEnum(VARIANT IgnoreFilter, IUnknown** oEnum) noexcept {
  if (oEnum == nullptr) return E_POINTER;
  *oEnum = nullptr;
  return Boundary(kItf, [&] {
    const bool ignoreFilter = OptionalBool(IgnoreFilter, false);
    return SnapshotEnum<t4::OutlookItem>::Create(core_->MemberCollection(ignoreFilter).Snapshot(),
                                                 oEnum);
  });
}

HRESULT CategoryObject::get_ShortCut(LONG* lShortCut) noexcept {
  if (lShortCut == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *lShortCut = core_->ShortCut(); });
}

HRESULT CategoryObject::put_ShortCut(LONG lShortCut) noexcept {
  return Boundary(kItf, [&] { core_->SetShortCut(lShortCut); });
}

}  // namespace t4::com
