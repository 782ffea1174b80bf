#include "Invocation.h"

namespace t4standin {

namespace {

bool IsParamNotFound(const VARIANT* value) noexcept {
  return value != nullptr && V_VT(value) == VT_ERROR && V_ERROR(value) == DISP_E_PARAMNOTFOUND;
}

}  // namespace

const VARIANT* Invocation::Raw(UINT index) const noexcept {
  if (index == kPutValue) {
    return IsPut() && params_->cArgs > 0 ? &params_->rgvarg[0] : nullptr;
  }
  if (index >= ArgCount()) return nullptr;
  return &params_->rgvarg[params_->cArgs - 1 - index];
}

const VARIANT* Invocation::Arg(UINT index) const noexcept {
  const VARIANT* value = Raw(index);
  while (value != nullptr && V_VT(value) == (VT_BYREF | VT_VARIANT)) value = V_VARIANTREF(value);
  return value;
}

bool Invocation::IsMissing(UINT index) const noexcept {
  const VARIANT* value = Arg(index);
  return value == nullptr || IsParamNotFound(value);
}

HRESULT Invocation::BadArg(UINT index, HRESULT hr) noexcept {
  if (argErr_ != nullptr) *argErr_ = index == kPutValue ? 0 : params_->cArgs - 1 - index;
  return hr;
}

HRESULT Invocation::GetValue(UINT index, VARIANT* value) noexcept {
  ::VariantInit(value);
  if (IsMissing(index)) return BadArg(index, DISP_E_PARAMNOTFOUND);
  const HRESULT hr = ::VariantCopyInd(value, const_cast<VARIANT*>(Arg(index)));
  return FAILED(hr) ? BadArg(index, hr) : S_OK;
}

HRESULT Invocation::GetString(UINT index, std::wstring* value) noexcept {
  VARIANT v;
  HRESULT hr = GetValue(index, &v);
  if (FAILED(hr)) return hr;
  // VARIANT_ALPHABOOL: True and False as words, as a script would write them.
  hr = ::VariantChangeType(&v, &v, VARIANT_ALPHABOOL, VT_BSTR);
  if (SUCCEEDED(hr)) {
    value->assign(V_BSTR(&v) != nullptr ? V_BSTR(&v) : L"", ::SysStringLen(V_BSTR(&v)));
  }
  ::VariantClear(&v);
  return FAILED(hr) ? BadArg(index, DISP_E_TYPEMISMATCH) : S_OK;
}

HRESULT Invocation::GetLong(UINT index, long* value) noexcept {
  VARIANT v;
  HRESULT hr = GetValue(index, &v);
  if (FAILED(hr)) return hr;
  hr = ::VariantChangeType(&v, &v, 0, VT_I4);
  if (SUCCEEDED(hr)) *value = V_I4(&v);
  ::VariantClear(&v);
  if (hr == DISP_E_OVERFLOW) return BadArg(index, hr);
  return FAILED(hr) ? BadArg(index, DISP_E_TYPEMISMATCH) : S_OK;
}

HRESULT Invocation::GetBool(UINT index, bool* value) noexcept {
  VARIANT v;
  HRESULT hr = GetValue(index, &v);
  if (FAILED(hr)) return hr;
  hr = ::VariantChangeType(&v, &v, 0, VT_BOOL);
  if (SUCCEEDED(hr)) *value = V_BOOL(&v) != VARIANT_FALSE;
  ::VariantClear(&v);
  return FAILED(hr) ? BadArg(index, DISP_E_TYPEMISMATCH) : S_OK;
}

HRESULT Invocation::ReturnString(const std::wstring& value) noexcept {
  if (result_ == nullptr) return S_OK;
  BSTR text = ::SysAllocStringLen(value.data(), static_cast<UINT>(value.size()));
  if (text == nullptr) return E_OUTOFMEMORY;
  V_VT(result_) = VT_BSTR;
  V_BSTR(result_) = text;
  return S_OK;
}

HRESULT Invocation::ReturnLong(long value) noexcept {
  if (result_ == nullptr) return S_OK;
  V_VT(result_) = VT_I4;
  V_I4(result_) = value;
  return S_OK;
}

HRESULT Invocation::ReturnBool(bool value) noexcept {
  if (result_ == nullptr) return S_OK;
  V_VT(result_) = VT_BOOL;
  V_BOOL(result_) = value ? VARIANT_TRUE : VARIANT_FALSE;
  return S_OK;
}

HRESULT Invocation::ReturnObject(IDispatch* object) noexcept {
  if (object == nullptr) return E_OUTOFMEMORY;
  if (result_ == nullptr) {
    object->Release();
    return S_OK;
  }
  V_VT(result_) = VT_DISPATCH;
  V_DISPATCH(result_) = object;
  return S_OK;
}

HRESULT Invocation::ReturnVariant(VARIANT* value) noexcept {
  if (result_ == nullptr) return ::VariantClear(value);
  *result_ = *value;
  V_VT(value) = VT_EMPTY;
  return S_OK;
}

HRESULT Invocation::Fail(HRESULT scode, const wchar_t* description) noexcept {
  if (excep_ == nullptr) return scode;
  *excep_ = EXCEPINFO{};
  excep_->bstrSource = ::SysAllocString(L"Tandrel4Test.Outlook");
  excep_->bstrDescription = ::SysAllocString(description);
  excep_->scode = scode;
  return DISP_E_EXCEPTION;
}

}  // namespace t4standin
