#pragma once

#include <oaidl.h>
#include <windows.h>

#include <memory>
#include <new>
#include <vector>

#include "com/ComModule.h"
#include "com/Wrappers.h"

namespace t4::com {

// The IEnumVARIANT behind NewEnum (For Each). It walks a list of the core
// objects taken when the enumeration starts, so that a loop may add, delete
// or re-filter the collection it walks: it still visits exactly the objects
// that were in the collection when it started, each once, including one
// deleted meanwhile. Each object reaches the client as its identity-mapped
// wrapper (VT_DISPATCH), made when Next hands it out.
template <class Core>
class SnapshotEnum final : public IEnumVARIANT {
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

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) noexcept override {
    if (object == nullptr) return E_POINTER;
    if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IEnumVARIANT)) {
      AddRef();
      *object = static_cast<IEnumVARIANT*>(this);
      return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() noexcept override {
    return static_cast<ULONG>(::InterlockedIncrement(&refs_));
  }
  ULONG STDMETHODCALLTYPE Release() noexcept override {
    const ULONG n = static_cast<ULONG>(::InterlockedDecrement(&refs_));
    if (n == 0) delete this;
    return n;
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
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) noexcept override {
    const size_t left = items_->size() - position_;
    if (count > left) {
      position_ = items_->size();
      return S_FALSE;
    }
    position_ += count;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Reset() noexcept override {
    position_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** clone) noexcept override {
    if (clone == nullptr) return E_POINTER;
    *clone = new (std::nothrow) SnapshotEnum(items_, position_);
    return *clone != nullptr ? S_OK : E_OUTOFMEMORY;
  }

 private:
  // A clone shares the list and starts where its original stands.
  SnapshotEnum(Items items, size_t position) noexcept
      : items_(std::move(items)), position_(position) {
    ComModule::ObjectCreated();
  }
  ~SnapshotEnum() { ComModule::ObjectDestroyed(); }

  LONG refs_ = 1;
  Items items_;
  size_t position_;
};

}  // namespace t4::com
