#include "ConnectionPointEnum.h"

#include <new>

#include "StandInModule.h"

namespace t4standin {

ConnectionPointEnum::ConnectionPointEnum(IConnectionPoint* const* points, size_t count)
    : points_(points, points + count) {
  for (IConnectionPoint* point : points_) point->AddRef();
  StandInModule::ObjectCreated();
}

ConnectionPointEnum::~ConnectionPointEnum() {
  for (IConnectionPoint* point : points_) point->Release();
  StandInModule::ObjectDestroyed();
}

HRESULT ConnectionPointEnum::QueryInterface(REFIID riid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (!IsEqualIID(riid, IID_IUnknown) && !IsEqualIID(riid, IID_IEnumConnectionPoints)) {
    return E_NOINTERFACE;
  }
  *object = static_cast<IEnumConnectionPoints*>(this);
  AddRef();
  return S_OK;
}

ULONG ConnectionPointEnum::AddRef() noexcept {
  return static_cast<ULONG>(::InterlockedIncrement(&refs_));
}

ULONG ConnectionPointEnum::Release() noexcept {
  const LONG refs = ::InterlockedDecrement(&refs_);
  if (refs == 0) delete this;
  return static_cast<ULONG>(refs);
}

HRESULT ConnectionPointEnum::Next(ULONG count, IConnectionPoint** points, ULONG* fetched) noexcept {
  if (points == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
  ULONG n = 0;
  while (n < count && position_ < points_.size()) {
    points[n] = points_[position_++];
    points[n]->AddRef();
    ++n;
  }
  if (fetched != nullptr) *fetched = n;
  return n == count ? S_OK : S_FALSE;
}

HRESULT ConnectionPointEnum::Skip(ULONG count) noexcept {
  const size_t left = points_.size() - position_;
  if (count > left) {
    position_ = points_.size();
    return S_FALSE;
  }
  position_ += count;
  return S_OK;
}

HRESULT ConnectionPointEnum::Reset() noexcept {
  position_ = 0;
  return S_OK;
}

HRESULT ConnectionPointEnum::Clone(IEnumConnectionPoints** copy) noexcept {
  if (copy == nullptr) return E_POINTER;
  *copy = nullptr;
  ConnectionPointEnum* clone = nullptr;
  try {
    clone = new ConnectionPointEnum(points_.data(), points_.size());
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
  clone->position_ = position_;
  *copy = clone;
  return S_OK;
}

}  // namespace t4standin
