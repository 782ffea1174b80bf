#include "com/OutlookItemsObject.h"

#include "com/Enumerator.h"
#include "com/ErrorBoundary.h"
#include "com/Variants.h"
#include "com/Wrap.h"

namespace t4::com {

namespace {

const IID& kItf = IID__OutlookItems;

}  // namespace

OutlookItemsObject::OutlookItemsObject(std::shared_ptr<t4::OutlookItems> core) noexcept
    : core_(std::move(core)) {}

// _OutlookItems -----------------------------------------------------------

HRESULT OutlookItemsObject::get_Changed(VARIANT_BOOL* bChanged) noexcept {
  if (bChanged == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *bChanged = ToVariantBool(core_->Changed()); });
}

HRESULT OutlookItemsObject::get_Count(LONG* lCount) noexcept {
  if (lCount == nullptr) return E_POINTER;
  return Boundary(kItf, [&] { *lCount = core_->Count(); });
}

HRESULT OutlookItemsObject::get_Item(VARIANT Index, _OutlookItem** oItem) noexcept {
  if (oItem == nullptr) return E_POINTER;
  *oItem = nullptr;
  return Boundary(kItf, [&] {
    if (const auto index = IndexOf(Index)) *oItem = Wrap(core_->Item(*index));
  });
}

HRESULT OutlookItemsObject::get_NewEnum(IUnknown** oEnum) noexcept {
  if (oEnum == nullptr) return E_POINTER;
  *oEnum = nullptr;
  return Boundary(kItf,
                  [&] { return SnapshotEnum<t4::OutlookItem>::Create(core_->Enumerate(), oEnum); });
}

}  // namespace t4::com
