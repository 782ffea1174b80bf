#pragma once

#include <oaidl.h>
#include <windows.h>

#include <memory>
#include <new>
#include <vector>

#include "com/EnumeratorBase.h"
#include "com/Wrap.h"

namespace t4::com {

// The IEnumVARIANT behind NewEnum (For Each). It walks a list of the core
// objects taken when the enumeration starts, so that a loop may add, delete
// or re-filter the collection it walks: it still visits exactly the objects
// that were in the collection when it started, each once, including one
// deleted meanwhile. Each object reaches the client as its identity-mapped
// wrapper (VT_DISPATCH), made when Next hands it out.
template <class Core>
class SnapshotEnum final : public EnumeratorBase<SnapshotEnum<Core>, IEnumVARIANT> {
  using Base = EnumeratorBase<SnapshotEnum<Core>, IEnumVARIANT>;
  friend Base;
  using Base::position_;

 public:
  using Items = std::shared_ptr<const std::vector<std::shared_ptr<Core>>>;

  // A new enumerator over `items` (one reference, for the caller).
  static HRESULT Create(std::vector<std::shared_ptr<Core>> items, IUnknown** result) noexcept {
    if (result == nullptr) return E_POINTER;
    *result = nullptr;
    try {
      auto shared = std::make_shared<const std::vector<std::shared_ptr<Core>>>(std::move(items));
      *result = new SnapshotEnum(std::move(shared), 0);
    } catch (...) {
      return E_OUTOFMEMORY;
    }
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* values, ULONG* fetched) noexcept override {
    if (fetched != nullptr) *fetched = 0;
    if (values == nullptr || (count > 1 && fetched == nullptr)) return E_POINTER;
    ULONG n = 0;
    try {
      for (; n < count && position_ < items_->size(); ++n) {
        ::VariantInit(&values[n]);
        V_VT(&values[n]) = VT_DISPATCH;
        V_DISPATCH(&values[n]) = Wrap((*items_)[position_]);
        ++position_;
      }
    } catch (...) {
      // Hand out all or nothing of this call; the position goes back too.
      for (ULONG i = 0; i < n; ++i) ::VariantClear(&values[i]);
      position_ -= n;
      return E_OUTOFMEMORY;
    }
    if (fetched != nullptr) *fetched = n;
    return n == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** clone) noexcept override {
    if (clone == nullptr) return E_POINTER;
    *clone = new (std::nothrow) SnapshotEnum(items_, position_);
    return *clone != nullptr ? S_OK : E_OUTOFMEMORY;
  }

 private:
  // A clone shares the list and starts where its original stands.
  SnapshotEnum(Items items, size_t position) noexcept : Base(position), items_(std::move(items)) {}
  ~SnapshotEnum() = default;

  size_t Size() const noexcept { return items_->size(); }

  Items items_;
};

}  // namespace t4::com
