#include "MapiVariants.h"

#include <cstring>

namespace t4standin {

HRESULT MapiVariants::Bytes(const std::vector<BYTE>& bytes, VARIANT* out) noexcept {
  SAFEARRAY* array = ::SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
  if (array == nullptr) return E_OUTOFMEMORY;
  if (!bytes.empty()) {
    void* data = nullptr;
    ::SafeArrayAccessData(array, &data);
    std::memcpy(data, bytes.data(), bytes.size());
    ::SafeArrayUnaccessData(array);
  }
  V_VT(out) = VT_ARRAY | VT_UI1;
  V_ARRAY(out) = array;
  return S_OK;
}

HRESULT MapiVariants::Array(std::vector<VARIANT>& values, VARIANT* out) noexcept {
  SAFEARRAY* array = ::SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(values.size()));
  HRESULT hr = array == nullptr ? E_OUTOFMEMORY : S_OK;
  for (size_t i = 0; i < values.size(); ++i) {
    LONG index = static_cast<LONG>(i);
    if (SUCCEEDED(hr)) hr = ::SafeArrayPutElement(array, &index, &values[i]);
    ::VariantClear(&values[i]);
  }
  values.clear();
  if (FAILED(hr)) {
    if (array != nullptr) ::SafeArrayDestroy(array);
    return hr;
  }
  V_VT(out) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(out) = array;
  return S_OK;
}

HRESULT MapiVariants::Texts(const std::vector<std::wstring>& texts, VARIANT* out) noexcept {
  std::vector<VARIANT> values(texts.size());
  for (size_t i = 0; i < texts.size(); ++i) {
    V_VT(&values[i]) = VT_BSTR;
    V_BSTR(&values[i]) = ::SysAllocStringLen(texts[i].data(), static_cast<UINT>(texts[i].size()));
  }
  return Array(values, out);
}

bool MapiVariants::ReadBytes(const VARIANT* value, std::vector<BYTE>* bytes) noexcept {
  while (value != nullptr && V_VT(value) == (VT_BYREF | VT_VARIANT)) value = V_VARIANTREF(value);
  if (value == nullptr) return false;
  SAFEARRAY* array = nullptr;
  if (V_VT(value) == (VT_ARRAY | VT_UI1)) {
    array = V_ARRAY(value);
  } else if (V_VT(value) == (VT_BYREF | VT_ARRAY | VT_UI1)) {
    array = *V_ARRAYREF(value);
  } else {
    return false;
  }
  bytes->clear();
  if (array == nullptr) return true;
  LONG lower = 0;
  LONG upper = -1;
  ::SafeArrayGetLBound(array, 1, &lower);
  ::SafeArrayGetUBound(array, 1, &upper);
  if (upper < lower) return true;
  void* data = nullptr;
  if (FAILED(::SafeArrayAccessData(array, &data))) return false;
  const BYTE* begin = static_cast<const BYTE*>(data);
  bytes->assign(begin, begin + (upper - lower + 1));
  ::SafeArrayUnaccessData(array);
  return true;
}

bool MapiVariants::ReadLongs(const VARIANT* value, std::vector<long>* longs) noexcept {
  while (value != nullptr && V_VT(value) == (VT_BYREF | VT_VARIANT)) value = V_VARIANTREF(value);
  if (value == nullptr || (V_VT(value) & VT_ARRAY) == 0) return false;
  SAFEARRAY* array = (V_VT(value) & VT_BYREF) != 0 ? *V_ARRAYREF(value) : V_ARRAY(value);
  const VARTYPE element = static_cast<VARTYPE>(V_VT(value) & ~(VT_ARRAY | VT_BYREF));
  if (array == nullptr || ::SafeArrayGetDim(array) != 1) return false;
  LONG lower = 0;
  LONG upper = -1;
  ::SafeArrayGetLBound(array, 1, &lower);
  ::SafeArrayGetUBound(array, 1, &upper);
  longs->clear();
  for (LONG i = lower; i <= upper; ++i) {
    VARIANT item;
    ::VariantInit(&item);
    if (element == VT_VARIANT) {
      if (FAILED(::SafeArrayGetElement(array, &i, &item))) return false;
    } else if (element == VT_I4) {
      V_VT(&item) = VT_I4;
      if (FAILED(::SafeArrayGetElement(array, &i, &V_I4(&item)))) return false;
    } else {
      return false;
    }
    const HRESULT hr = ::VariantChangeType(&item, &item, 0, VT_I4);
    if (FAILED(hr)) {
      ::VariantClear(&item);
      return false;
    }
    longs->push_back(V_I4(&item));
  }
  return true;
}

}  // namespace t4standin
