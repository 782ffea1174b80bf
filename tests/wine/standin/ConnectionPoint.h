#pragma once

#include <ocidl.h>
#include <olectl.h>
#include <windows.h>

#include <utility>
#include <vector>

namespace t4standin {

// The connection point of one of Outlook's application event interfaces. It
// is part of the Application object and shares its reference count, so a
// client holding only the connection point keeps the Application alive.
// Sinks are kept as IDispatch: a script or VB sink offers IDispatch, a C++
// sink may answer only the event dispinterface (whose vtable is IDispatch's).
class ConnectionPoint final : public IConnectionPoint {
 public:
  ConnectionPoint(IConnectionPointContainer* container, const IID& source) noexcept
      : container_(container), source_(source) {}
  ~ConnectionPoint();
  ConnectionPoint(const ConnectionPoint&) = delete;
  ConnectionPoint& operator=(const ConnectionPoint&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) noexcept override;
  ULONG STDMETHODCALLTYPE AddRef() noexcept override { return container_->AddRef(); }
  ULONG STDMETHODCALLTYPE Release() noexcept override { return container_->Release(); }

  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) noexcept override;
  HRESULT STDMETHODCALLTYPE
  GetConnectionPointContainer(IConnectionPointContainer** container) noexcept override;
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) noexcept override;
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) noexcept override;
  // Optional for a connection point, and nothing here needs it.
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) noexcept override;

  size_t SinkCount() const noexcept { return sinks_.size(); }

  // Calls `id` with no arguments and DISPATCH_METHOD on every sink, the way
  // Outlook raises Quit. A sink that unadvises while it runs (what an add-in
  // does on Quit) does not disturb the loop: the call goes to the sinks
  // connected when firing started.
  void Fire(DISPID id) noexcept;

 private:
  IConnectionPointContainer* container_;  // the owner; not counted
  IID source_;
  DWORD nextCookie_ = 1;
  std::vector<std::pair<DWORD, IDispatch*>> sinks_;
};

}  // namespace t4standin
