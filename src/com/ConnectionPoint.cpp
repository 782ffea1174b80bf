#include "com/ConnectionPoint.h"

#include <new>

#include "com/EnumeratorBase.h"

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

// The reference-counted object behind each element of the two enumerators.
IUnknown* Held(const CONNECTDATA& connection) noexcept {
  return connection.pUnk;
}
IUnknown* Held(IConnectionPoint* point) noexcept {
  return point;
}

// An IEnumConnections or IEnumConnectionPoints over the elements it was made
// with; it holds a reference on each, so that one released by its owner
// meanwhile (a sink unadvised, say) is still safe to hand out. Next gives the
// caller a reference of its own on each element it returns.
template <class Interface, class Element>
class HeldListEnum final : public EnumeratorBase<HeldListEnum<Interface, Element>, Interface> {
  using Base = EnumeratorBase<HeldListEnum<Interface, Element>, Interface>;
  friend Base;
  using Base::position_;

 public:
  HeldListEnum(std::vector<Element> elements, size_t position) noexcept
      : Base(position), elements_(std::move(elements)) {
    for (const Element& e : elements_) Held(e)->AddRef();
  }
  ~HeldListEnum() {
    for (const Element& e : elements_) Held(e)->Release();
  }

  HRESULT STDMETHODCALLTYPE Next(ULONG count, Element* out, ULONG* fetched) noexcept override {
    if (out == nullptr || (count > 1 && fetched == nullptr)) return E_POINTER;
    ULONG n = 0;
    while (n < count && position_ < elements_.size()) {
      out[n] = elements_[position_++];
      Held(out[n])->AddRef();  // the caller's reference
      ++n;
    }
    if (fetched != nullptr) *fetched = n;
    return n == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Clone(Interface** clone) noexcept override {
    if (clone == nullptr) return E_POINTER;
    *clone = nullptr;
    try {
      *clone = new HeldListEnum(elements_, position_);
    } catch (...) {
      return E_OUTOFMEMORY;
    }
    return S_OK;
  }

 private:
  size_t Size() const noexcept { return elements_.size(); }

  std::vector<Element> elements_;
};

using ConnectionEnum = HeldListEnum<IEnumConnections, CONNECTDATA>;
using ConnectionPointEnum = HeldListEnum<IEnumConnectionPoints, IConnectionPoint*>;

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
