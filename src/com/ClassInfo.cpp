#include "com/ClassInfo.h"

#include "com/ComModule.h"

namespace t4::com {

HRESULT ClassTypeInfo(REFCLSID clsid, ITypeInfo** info) noexcept {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  ITypeLib* lib = nullptr;
  HRESULT hr = ComModule::TypeLib(&lib);
  if (FAILED(hr)) return hr;
  hr = lib->GetTypeInfoOfGuid(clsid, info);
  lib->Release();
  return hr;
}

HRESULT DefaultSourceGuid(const IID* source, DWORD kind, GUID* guid) noexcept {
  if (guid == nullptr) return E_POINTER;
  *guid = GUID_NULL;
  if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
  if (source == nullptr) return E_INVALIDARG;
  *guid = *source;
  return S_OK;
}

}  // namespace t4::com
