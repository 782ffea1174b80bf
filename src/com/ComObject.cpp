#include "com/ComObject.h"

namespace t4::com {

namespace {

// Errors of the dispatch machinery itself (unknown member, wrong argument
// count or type, ...), which ITypeInfo::Invoke reports directly.
bool IsDispatchError(HRESULT hr) noexcept {
  return HRESULT_FACILITY(hr) == FACILITY_DISPATCH;
}

// Script engines only read an error's number and text from EXCEPINFO when
// Invoke says DISP_E_EXCEPTION. ITypeInfo::Invoke normally builds it from
// the IErrorInfo the method set; where an implementation hands the method's
// HRESULT through instead, or leaves EXCEPINFO empty, fill it here.
void FillExcepInfo(HRESULT code, EXCEPINFO* excep) noexcept {
  excep->wCode = 0;
  excep->scode = code;
  IErrorInfo* info = nullptr;
  if (::GetErrorInfo(0, &info) == S_OK && info != nullptr) {
    info->GetSource(&excep->bstrSource);
    info->GetDescription(&excep->bstrDescription);
    info->GetHelpFile(&excep->bstrHelpFile);
    info->GetHelpContext(&excep->dwHelpContext);
    info->Release();
  }
}

}  // namespace

HRESULT DispatchSupport::GetTypeInfoCount(UINT* count) noexcept {
  if (count == nullptr) return E_POINTER;
  *count = 1;
  return S_OK;
}

HRESULT DispatchSupport::GetTypeInfo(REFIID itf, UINT index, ITypeInfo** info) noexcept {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  if (index != 0) return DISP_E_BADINDEX;
  ITypeInfo* typeInfo = nullptr;
  const HRESULT hr = ComModule::DispatchTypeInfo(itf, &typeInfo);
  if (FAILED(hr)) return hr;
  typeInfo->AddRef();
  *info = typeInfo;
  return S_OK;
}

HRESULT DispatchSupport::GetIDsOfNames(REFIID itf, REFIID riid, LPOLESTR* names, UINT count,
                                       DISPID* ids) noexcept {
  if (!IsEqualIID(riid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
  ITypeInfo* typeInfo = nullptr;
  const HRESULT hr = ComModule::InterfaceTypeInfo(itf, &typeInfo);
  if (FAILED(hr)) return hr;
  return typeInfo->GetIDsOfNames(names, count, ids);
}

HRESULT DispatchSupport::Invoke(REFIID itf, void* object, DISPID id, REFIID riid, WORD flags,
                                DISPPARAMS* params, VARIANT* result, EXCEPINFO* excep,
                                UINT* argErr) noexcept {
  if (!IsEqualIID(riid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
  ITypeInfo* typeInfo = nullptr;
  HRESULT hr = ComModule::InterfaceTypeInfo(itf, &typeInfo);
  if (FAILED(hr)) return hr;
  if (excep != nullptr) {
    excep->wCode = 0;
    excep->scode = S_OK;
  }
  // A property read called as a method: JScript calls obj.Count() and
  // builds new Enumerator(obj) with DISPATCH_METHOD alone, which the type
  // library's Invoke would refuse for a propget. Visual Basic and VBScript
  // send both flags for every call, and the library reads it the same way.
  if (flags == DISPATCH_METHOD) flags = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
  hr = typeInfo->Invoke(object, id, flags, params, result, excep, argErr);
  if (excep == nullptr) return hr;
  if (hr == DISP_E_EXCEPTION) {
    if (excep->scode == S_OK && excep->wCode == 0) FillExcepInfo(E_FAIL, excep);
    return hr;
  }
  if (FAILED(hr) && !IsDispatchError(hr)) {
    FillExcepInfo(hr, excep);
    return DISP_E_EXCEPTION;
  }
  return hr;
}

}  // namespace t4::com
