#include "com/ClassInfo.h"

#include "com/ComModule.h"
#include "platform/win32/ComPtr.h"

namespace t4::com {

HRESULT ClassInfo::TypeInfo(REFCLSID clsid, ITypeInfo** info) noexcept {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  win32::ComPtr<ITypeLib> lib;
  const HRESULT hr = ComModule::TypeLib(lib.Put());
  if (FAILED(hr)) return hr;
  return lib->GetTypeInfoOfGuid(clsid, info);
}

HRESULT ClassInfo::DefaultSource(const IID* source, DWORD kind, GUID* guid) noexcept {
  if (guid == nullptr) return E_POINTER;
  *guid = GUID_NULL;
  if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
  if (source == nullptr) return E_INVALIDARG;
  *guid = *source;
  return S_OK;
}

}  // namespace t4::com
