#pragma once

#include <oaidl.h>
#include <windows.h>

#include <vector>

namespace t4standin {

// IEnumVARIANT over a snapshot of a collection, for _NewEnum (For Each).
class VariantEnum final : public IEnumVARIANT {
 public:
  // Takes over the values (which it clears when it goes); one reference.
  explicit VariantEnum(std::vector<VARIANT> values);
  VariantEnum(const VariantEnum&) = delete;
  VariantEnum& operator=(const VariantEnum&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) noexcept override;
  ULONG STDMETHODCALLTYPE AddRef() noexcept override;
  ULONG STDMETHODCALLTYPE Release() noexcept override;

  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* values, ULONG* fetched) noexcept override;
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) noexcept override;
  HRESULT STDMETHODCALLTYPE Reset() noexcept override;
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) noexcept override;

 private:
  ~VariantEnum();

  std::vector<VARIANT> values_;
  size_t position_ = 0;
  volatile LONG refs_ = 1;
};

}  // namespace t4standin
