#include "DispatchProbe.h"

#include <vector>

namespace t4test {

namespace {

void DefaultArgument(const TYPEDESC& type, USHORT flags, VARIANT* arg, VARIANT* slot) {
  ::VariantInit(arg);
  switch (type.vt) {
    case VT_BSTR:
      V_VT(arg) = VT_BSTR;
      V_BSTR(arg) = ::SysAllocString(L"");
      return;
    case VT_BOOL:
      V_VT(arg) = VT_BOOL;
      V_BOOL(arg) = VARIANT_FALSE;
      return;
    case VT_DATE:
      V_VT(arg) = VT_DATE;
      V_DATE(arg) = 0;
      return;
    case VT_DISPATCH:
    case VT_UNKNOWN:
      V_VT(arg) = VT_DISPATCH;
      V_DISPATCH(arg) = nullptr;
      return;
    case VT_VARIANT:
      if (flags & PARAMFLAG_FOPT) {
        V_VT(arg) = VT_ERROR;
        V_ERROR(arg) = DISP_E_PARAMNOTFOUND;
      } else {
        V_VT(arg) = VT_I4;
        V_I4(arg) = 1;
      }
      return;
    case VT_PTR:
      if (type.lptdesc->vt == VT_VARIANT) {
        // A script variable passed by reference.
        V_VT(arg) = VT_BYREF | VT_VARIANT;
        V_VARIANTREF(arg) = slot;
      } else {
        // An object parameter (_Category*, IDispatch*, ...): Nothing.
        V_VT(arg) = VT_DISPATCH;
        V_DISPATCH(arg) = nullptr;
      }
      return;
    default:  // numbers and enums
      V_VT(arg) = VT_I4;
      V_I4(arg) = 0;
      return;
  }
}

}  // namespace

ProbeResult InvokeWithDefaults(IDispatch* dispatch, const FUNCDESC& func) {
  std::vector<VARIANT> args;
  std::vector<VARIANT> slots(static_cast<size_t>(func.cParams) + 1);
  for (VARIANT& slot : slots) ::VariantInit(&slot);
  for (SHORT i = 0; i < func.cParams; ++i) {
    const ELEMDESC& param = func.lprgelemdescParam[i];
    if (param.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) continue;
    VARIANT arg;
    DefaultArgument(param.tdesc, param.paramdesc.wParamFlags, &arg, &slots[i]);
    args.push_back(arg);
  }
  // IDispatch takes the arguments last first.
  std::vector<VARIANT> reversed(args.rbegin(), args.rend());
  DISPPARAMS params = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
  DISPID named = DISPID_PROPERTYPUT;
  WORD flags = DISPATCH_METHOD;
  if (func.invkind == INVOKE_PROPERTYGET) flags = DISPATCH_PROPERTYGET;
  if (func.invkind == INVOKE_PROPERTYPUT || func.invkind == INVOKE_PROPERTYPUTREF) {
    flags = func.invkind == INVOKE_PROPERTYPUT ? DISPATCH_PROPERTYPUT : DISPATCH_PROPERTYPUTREF;
    params.rgdispidNamedArgs = &named;
    params.cNamedArgs = 1;
  }
  VARIANT result;
  ::VariantInit(&result);
  EXCEPINFO excep = {};
  UINT argErr = 0;
  ProbeResult probe;
  probe.hr = dispatch->Invoke(func.memid, IID_NULL, LOCALE_USER_DEFAULT, flags, &params,
                              flags == DISPATCH_PROPERTYPUT ? nullptr : &result, &excep, &argErr);
  if (probe.hr == DISP_E_EXCEPTION) {
    probe.scode = excep.scode;
    if (excep.bstrDescription != nullptr) probe.description = excep.bstrDescription;
    if (excep.bstrSource != nullptr) probe.source = excep.bstrSource;
  }
  ::SysFreeString(excep.bstrDescription);
  ::SysFreeString(excep.bstrSource);
  ::SysFreeString(excep.bstrHelpFile);
  ::VariantClear(&result);
  for (VARIANT& arg : args) ::VariantClear(&arg);
  for (VARIANT& slot : slots) ::VariantClear(&slot);
  return probe;
}

HRESULT VtableTypeInfo(ITypeLib* lib, REFIID iid, ITypeInfo** info) {
  *info = nullptr;
  ITypeInfo* dispatchView = nullptr;
  HRESULT hr = lib->GetTypeInfoOfGuid(iid, &dispatchView);
  if (FAILED(hr)) return hr;
  HREFTYPE ref = 0;
  hr = dispatchView->GetRefTypeOfImplType(static_cast<UINT>(-1), &ref);
  if (SUCCEEDED(hr)) hr = dispatchView->GetRefTypeInfo(ref, info);
  dispatchView->Release();
  return hr;
}

std::wstring MemberName(ITypeInfo* info, MEMBERID id) {
  BSTR name = nullptr;
  std::wstring result;
  if (SUCCEEDED(info->GetDocumentation(id, &name, nullptr, nullptr, nullptr)) && name != nullptr) {
    result = name;
  }
  ::SysFreeString(name);
  return result;
}

}  // namespace t4test
