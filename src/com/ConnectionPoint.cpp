#include "com/ConnectionPoint.h"

#include <new>

#include "com/ComModule.h"

namespace t4::com {

ConnectionPoint::ConnectionPoint(IConnectionPointContainer* container, const IID& source) noexcept
    : container_(container), source_(source) {}

ConnectionPoint::~ConnectionPoint() {
  for (auto& sink : sinks_) sink.second->Release();
}

HRESULT ConnectionPoint::QueryInterface(REFIID riid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IConnectionPoint)) {
    AddRef();
    *object = static_cast<IConnectionPoint*>(this);
    return S_OK;
  }
  *object = nullptr;
  return E_NOINTERFACE;
}

ULONG ConnectionPoint::AddRef() noexcept {
  return container_->AddRef();
}
ULONG ConnectionPoint::Release() noexcept {
  return container_->Release();
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
  // The sink must implement the source interface; a plain IDispatch sink
  // (what script engines build) is accepted too.
  IDispatch* dispatch = nullptr;
  if (FAILED(sink->QueryInterface(source_, reinterpret_cast<void**>(&dispatch))) &&
      FAILED(sink->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&dispatch)))) {
    return CONNECT_E_CANNOTCONNECT;
  }
  try {
    sinks_.emplace_back(nextCookie_, dispatch);
  } catch (...) {
    dispatch->Release();
    return E_OUTOFMEMORY;
  }
  *cookie = nextCookie_++;
  if (nextCookie_ == 0) nextCookie_ = 1;
  return S_OK;
}

HRESULT ConnectionPoint::Unadvise(DWORD cookie) noexcept {
  for (auto it = sinks_.begin(); it != sinks_.end(); ++it) {
    if (it->first != cookie) continue;
    IDispatch* sink = it->second;
    sinks_.erase(it);
    sink->Release();
    return S_OK;
  }
  return CONNECT_E_NOCONNECTION;
}

namespace {

// IEnumConnections over the sinks connected when it was made; it holds a
// reference on each, so a sink unadvised meanwhile is still safe to hand out.
class ConnectionEnum final : public IEnumConnections {
 public:
  ConnectionEnum(std::vector<CONNECTDATA> connections, size_t position) noexcept
      : connections_(std::move(connections)), position_(position) {
    for (const CONNECTDATA& c : connections_) c.pUnk->AddRef();
    ComModule::ObjectCreated();
  }
  ~ConnectionEnum() {
    for (const CONNECTDATA& c : connections_) c.pUnk->Release();
    ComModule::ObjectDestroyed();
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) noexcept override {
    if (object == nullptr) return E_POINTER;
    if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IEnumConnections)) {
      AddRef();
      *object = static_cast<IEnumConnections*>(this);
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

  HRESULT STDMETHODCALLTYPE Next(ULONG count, CONNECTDATA* data, ULONG* fetched) noexcept override {
    if (data == nullptr || (count > 1 && fetched == nullptr)) return E_POINTER;
    ULONG n = 0;
    while (n < count && position_ < connections_.size()) {
      data[n] = connections_[position_++];
      data[n].pUnk->AddRef();  // the caller's reference
      ++n;
    }
    if (fetched != nullptr) *fetched = n;
    return n == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) noexcept override {
    const size_t left = connections_.size() - position_;
    if (count > left) {
      position_ = connections_.size();
      return S_FALSE;
    }
    position_ += count;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Reset() noexcept override {
    position_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(IEnumConnections** clone) noexcept override {
    if (clone == nullptr) return E_POINTER;
    *clone = nullptr;
    try {
      *clone = new ConnectionEnum(connections_, position_);
    } catch (...) {
      return E_OUTOFMEMORY;
    }
    return S_OK;
  }

 private:
  LONG refs_ = 1;
  std::vector<CONNECTDATA> connections_;
  size_t position_;
};

}  // namespace

HRESULT ConnectionPoint::EnumConnections(IEnumConnections** connections) noexcept {
  if (connections == nullptr) return E_POINTER;
  *connections = nullptr;
  try {
    std::vector<CONNECTDATA> list;
    list.reserve(sinks_.size());
    for (const auto& [cookie, sink] : sinks_) list.push_back(CONNECTDATA{sink, cookie});
    *connections = new ConnectionEnum(std::move(list), 0);
  } catch (...) {
    return E_OUTOFMEMORY;
  }
  return S_OK;
}

void ConnectionPoint::Raise(DISPID id, DISPPARAMS* params) noexcept {
  std::vector<IDispatch*> targets;
  try {
    targets.reserve(sinks_.size());
  } catch (...) {
    return;
  }
  for (auto& sink : sinks_) {
    sink.second->AddRef();
    targets.push_back(sink.second);
  }
  for (IDispatch* target : targets) {
    // A failing sink must not keep the others from hearing the event, and
    // the library's work goes on whatever a sink does.
    target->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, params, nullptr, nullptr,
                   nullptr);
    target->Release();
  }
}

namespace {

class ConnectionPointEnum final : public IEnumConnectionPoints {
 public:
  ConnectionPointEnum(std::vector<IConnectionPoint*> points, size_t position) noexcept
      : points_(std::move(points)), position_(position) {
    for (IConnectionPoint* point : points_) point->AddRef();
    ComModule::ObjectCreated();
  }
  ~ConnectionPointEnum() {
    for (IConnectionPoint* point : points_) point->Release();
    ComModule::ObjectDestroyed();
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) noexcept override {
    if (object == nullptr) return E_POINTER;
    if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IEnumConnectionPoints)) {
      AddRef();
      *object = static_cast<IEnumConnectionPoints*>(this);
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

  HRESULT STDMETHODCALLTYPE Next(ULONG count, IConnectionPoint** points,
                                 ULONG* fetched) noexcept override {
    if (points == nullptr || (count > 1 && fetched == nullptr)) return E_POINTER;
    ULONG n = 0;
    while (n < count && position_ < points_.size()) {
      points[n] = points_[position_++];
      points[n]->AddRef();
      ++n;
    }
    if (fetched != nullptr) *fetched = n;
    return n == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) noexcept override {
    const size_t left = points_.size() - position_;
    if (count > left) {
      position_ = points_.size();
      return S_FALSE;
    }
    position_ += count;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Reset() noexcept override {
    position_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(IEnumConnectionPoints** clone) noexcept override {
    if (clone == nullptr) return E_POINTER;
    *clone = nullptr;
    try {
      *clone = new ConnectionPointEnum(points_, position_);
    } catch (...) {
      return E_OUTOFMEMORY;
    }
    return S_OK;
  }

 private:
  LONG refs_ = 1;
  std::vector<IConnectionPoint*> points_;
  size_t position_;
};

}  // namespace

HRESULT EnumerateConnectionPoints(IConnectionPoint* const* points, size_t count,
                                  IEnumConnectionPoints** result) noexcept {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  try {
    *result = new ConnectionPointEnum(std::vector<IConnectionPoint*>(points, points + count), 0);
  } catch (...) {
    return E_OUTOFMEMORY;
  }
  return S_OK;
}

}  // namespace t4::com
