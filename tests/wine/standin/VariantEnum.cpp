#include "VariantEnum.h"

#include <new>

#include "StandInModule.h"

namespace t4standin {

VariantEnum::VariantEnum(std::vector<VARIANT> values) : values_(std::move(values)) {
  StandInModule::ObjectCreated();
}

VariantEnum::~VariantEnum() {
  for (VARIANT& value : values_) ::VariantClear(&value);
  StandInModule::ObjectDestroyed();
}

HRESULT VariantEnum::QueryInterface(REFIID riid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (!IsEqualIID(riid, IID_IUnknown) && !IsEqualIID(riid, IID_IEnumVARIANT)) {
    return E_NOINTERFACE;
  }
  *object = static_cast<IEnumVARIANT*>(this);
  AddRef();
  return S_OK;
}

ULONG VariantEnum::AddRef() noexcept {
  return static_cast<ULONG>(::InterlockedIncrement(&refs_));
}

ULONG VariantEnum::Release() noexcept {
  const LONG refs = ::InterlockedDecrement(&refs_);
  if (refs == 0) delete this;
  return static_cast<ULONG>(refs);
}

HRESULT VariantEnum::Next(ULONG count, VARIANT* values, ULONG* fetched) noexcept {
  if (values == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
  ULONG n = 0;
  while (n < count && position_ < values_.size()) {
    ::VariantInit(&values[n]);
    if (FAILED(::VariantCopy(&values[n], &values_[position_]))) break;
    ++position_;
    ++n;
  }
  if (fetched != nullptr) *fetched = n;
  return n == count ? S_OK : S_FALSE;
}

HRESULT VariantEnum::Skip(ULONG count) noexcept {
  const size_t left = values_.size() - position_;
  if (count > left) {
    position_ = values_.size();
    return S_FALSE;
  }
  position_ += count;
  return S_OK;
}

HRESULT VariantEnum::Reset() noexcept {
  position_ = 0;
  return S_OK;
}

HRESULT VariantEnum::Clone(IEnumVARIANT** copy) noexcept {
  if (copy == nullptr) return E_POINTER;
  *copy = nullptr;
  try {
    std::vector<VARIANT> values(values_.size());
    for (size_t i = 0; i < values_.size(); ++i) {
      ::VariantInit(&values[i]);
      ::VariantCopy(&values[i], &values_[i]);
    }
    auto* clone = new VariantEnum(std::move(values));
    clone->position_ = position_;
    *copy = clone;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
  return S_OK;
}

}  // namespace t4standin
