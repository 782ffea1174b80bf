#include "ConnectionPoint.h"

#include <new>

namespace t4standin {

ConnectionPoint::~ConnectionPoint() {
  for (auto& sink : sinks_) sink.second->Release();
}

HRESULT ConnectionPoint::QueryInterface(REFIID riid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (!IsEqualIID(riid, IID_IUnknown) && !IsEqualIID(riid, IID_IConnectionPoint)) {
    return E_NOINTERFACE;
  }
  *object = static_cast<IConnectionPoint*>(this);
  AddRef();
  return S_OK;
}

HRESULT ConnectionPoint::GetConnectionInterface(IID* iid) noexcept {
  if (iid == nullptr) return E_POINTER;
  *iid = source_;
  return S_OK;
}

HRESULT ConnectionPoint::GetConnectionPointContainer(
    IConnectionPointContainer** container) noexcept {
  if (container == nullptr) return E_POINTER;
  container_->AddRef();
  *container = container_;
  return S_OK;
}

HRESULT ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) noexcept {
  if (cookie == nullptr) return E_POINTER;
  *cookie = 0;
  if (sink == nullptr) return E_POINTER;
  IDispatch* dispatch = nullptr;
  if (FAILED(sink->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&dispatch))) &&
      FAILED(sink->QueryInterface(source_, reinterpret_cast<void**>(&dispatch)))) {
    return CONNECT_E_CANNOTCONNECT;
  }
  try {
    sinks_.emplace_back(nextCookie_, dispatch);
  } catch (const std::bad_alloc&) {
    dispatch->Release();
    return E_OUTOFMEMORY;
  }
  *cookie = nextCookie_++;
  return S_OK;
}

HRESULT ConnectionPoint::Unadvise(DWORD cookie) noexcept {
  for (auto it = sinks_.begin(); it != sinks_.end(); ++it) {
    if (it->first == cookie) {
      IDispatch* sink = it->second;
      sinks_.erase(it);
      sink->Release();
      return S_OK;
    }
  }
  return CONNECT_E_NOCONNECTION;
}

HRESULT ConnectionPoint::EnumConnections(IEnumConnections** connections) noexcept {
  if (connections == nullptr) return E_POINTER;
  *connections = nullptr;
  return E_NOTIMPL;
}

void ConnectionPoint::Fire(DISPID id) noexcept {
  std::vector<IDispatch*> sinks;
  try {
    sinks.reserve(sinks_.size());
  } catch (const std::bad_alloc&) {
    return;
  }
  for (auto& sink : sinks_) {
    sink.second->AddRef();
    sinks.push_back(sink.second);
  }
  // The container stays alive even if a sink releases the last reference
  // its client held.
  container_->AddRef();
  for (IDispatch* sink : sinks) {
    DISPPARAMS none = {nullptr, nullptr, 0, 0};
    sink->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, nullptr, nullptr,
                 nullptr);
    sink->Release();
  }
  container_->Release();
}

}  // namespace t4standin
