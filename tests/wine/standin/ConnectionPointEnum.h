#pragma once

#include <ocidl.h>
#include <windows.h>

#include <vector>

namespace t4standin {

// IEnumConnectionPoints over the Application's connection points. Each
// entry holds a reference (which keeps the Application alive).
class ConnectionPointEnum final : public IEnumConnectionPoints {
 public:
  // Takes its own reference on every point; starts with one reference.
  ConnectionPointEnum(IConnectionPoint* const* points, size_t count);
  ConnectionPointEnum(const ConnectionPointEnum&) = delete;
  ConnectionPointEnum& operator=(const ConnectionPointEnum&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) noexcept override;
  ULONG STDMETHODCALLTYPE AddRef() noexcept override;
  ULONG STDMETHODCALLTYPE Release() noexcept override;

  HRESULT STDMETHODCALLTYPE Next(ULONG count, IConnectionPoint** points,
                                 ULONG* fetched) noexcept override;
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) noexcept override;
  HRESULT STDMETHODCALLTYPE Reset() noexcept override;
  HRESULT STDMETHODCALLTYPE Clone(IEnumConnectionPoints** copy) noexcept override;

 private:
  ~ConnectionPointEnum();

  std::vector<IConnectionPoint*> points_;
  size_t position_ = 0;
  volatile LONG refs_ = 1;
};

}  // namespace t4standin
