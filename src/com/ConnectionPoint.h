#pragma once

#include <ocidl.h>
#include <olectl.h>
#include <windows.h>

#include <utility>
#include <vector>

namespace t4::com {

// The connection point of one source (event) dispinterface. It lives inside
// the object that raises the events and shares that object's reference
// count, so a client that holds only the connection point keeps the object
// alive. Sinks are held as IDispatch (scripts and VB sinks offer nothing
// else) under a cookie that is never 0 and never reused.
class ConnectionPoint final : public IConnectionPoint {
 public:
  ConnectionPoint(IConnectionPointContainer* container, const IID& source) noexcept;
  ~ConnectionPoint();
  ConnectionPoint(const ConnectionPoint&) = delete;
  ConnectionPoint& operator=(const ConnectionPoint&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) noexcept override;
  ULONG STDMETHODCALLTYPE AddRef() noexcept override;
  ULONG STDMETHODCALLTYPE Release() noexcept override;

  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) noexcept override;
  HRESULT STDMETHODCALLTYPE
  GetConnectionPointContainer(IConnectionPointContainer** container) noexcept override;
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) noexcept override;
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) noexcept override;
  // Lists the sinks connected at the moment of the call (a snapshot).
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) noexcept override;

  const IID& Source() const noexcept { return source_; }
  size_t SinkCount() const noexcept { return sinks_.size(); }

  // Calls `id` on every sink with `params` (arguments in reverse order, as
  // IDispatch wants them). A sink may Unadvise, or advise others, while it
  // runs: the call goes to the sinks connected when raising started.
  void Raise(DISPID id, DISPPARAMS* params) noexcept;

 private:
  IConnectionPointContainer* container_;  // the owner; not counted
  IID source_;
  DWORD nextCookie_ = 1;
  std::vector<std::pair<DWORD, IDispatch*>> sinks_;
};

// IConnectionPointContainer::EnumConnectionPoints over a fixed list.
HRESULT EnumerateConnectionPoints(IConnectionPoint* const* points, size_t count,
                                  IEnumConnectionPoints** result) noexcept;

}  // namespace t4::com
