#pragma once

#include <ocidl.h>
#include <olectl.h>
#include <windows.h>

#include "com/ConnectionPoint.h"
#include "platform/win32/ComPtr.h"

namespace t4::com {

// IConnectionPointContainer for a class that raises the events of one
// source dispinterface, `Source`, used in a ComObject's interface list. It
// holds the class's one connection point, which shares the object's
// reference count, and raises the events through it.
template <const IID& Source>
class EventSource : public IConnectionPointContainer {
 public:
  using Interface = IConnectionPointContainer;

  // IConnectionPointContainer
  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) noexcept override {
    IConnectionPoint* all[] = {&events_};
    return EnumerateConnectionPoints(all, 1, points);
  }
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID riid,
                                                IConnectionPoint** point) noexcept override {
    if (point == nullptr) return E_POINTER;
    *point = nullptr;
    if (!IsEqualIID(riid, Source)) return CONNECT_E_NOCONNECTION;
    events_.AddRef();
    *point = &events_;
    return S_OK;
  }

  // True while a sink is advised; without one nobody hears an event, and
  // the object need not build its arguments.
  bool HasSinks() const noexcept { return events_.SinkCount() != 0; }

  // Calls `id` on every advised sink (ConnectionPoint::Raise). A sink may
  // drop the host's last reference to the object while it runs; the object
  // stays alive until the event is over.
  void RaiseEvent(DISPID id, DISPPARAMS* params) noexcept {
    const auto keep = win32::ComPtr<IConnectionPointContainer>::CopyFrom(this);
    events_.Raise(id, params);
  }

 protected:
  EventSource() noexcept : events_(this, Source) {}
  ~EventSource() = default;
  EventSource(const EventSource&) = delete;
  EventSource& operator=(const EventSource&) = delete;

 private:
  ConnectionPoint events_;
};

}  // namespace t4::com
