#include "Automation.h"

#include <vector>

namespace t4test {

Var Var::I4(LONG value) {
  Var v;
  V_VT(&v.v_) = VT_I4;
  V_I4(&v.v_) = value;
  return v;
}

Var Var::I2(SHORT value) {
  Var v;
  V_VT(&v.v_) = VT_I2;
  V_I2(&v.v_) = value;
  return v;
}

Var Var::UI1(BYTE value) {
  Var v;
  V_VT(&v.v_) = VT_UI1;
  V_UI1(&v.v_) = value;
  return v;
}

Var Var::R4(float value) {
  Var v;
  V_VT(&v.v_) = VT_R4;
  V_R4(&v.v_) = value;
  return v;
}

Var Var::R8(double value) {
  Var v;
  V_VT(&v.v_) = VT_R8;
  V_R8(&v.v_) = value;
  return v;
}

Var Var::Cy(LONGLONG tenThousandths) {
  Var v;
  V_VT(&v.v_) = VT_CY;
  V_CY(&v.v_).int64 = tenThousandths;
  return v;
}

Var Var::Dec(LONG units, BYTE scale) {
  Var v;
  DECIMAL d = {};
  d.scale = scale;
  d.sign = units < 0 ? DECIMAL_NEG : 0;
  d.Lo32 = static_cast<ULONG>(units < 0 ? -units : units);
  V_DECIMAL(&v.v_) = d;
  V_VT(&v.v_) = VT_DECIMAL;  // after the DECIMAL: its first field overlays vt
  return v;
}

Var Var::Date(double value) {
  Var v;
  V_VT(&v.v_) = VT_DATE;
  V_DATE(&v.v_) = value;
  return v;
}

Var Var::Bool(bool value) {
  Var v;
  V_VT(&v.v_) = VT_BOOL;
  V_BOOL(&v.v_) = value ? VARIANT_TRUE : VARIANT_FALSE;
  return v;
}

Var Var::Str(const wchar_t* text) {
  Var v;
  V_VT(&v.v_) = VT_BSTR;
  V_BSTR(&v.v_) = ::SysAllocString(text);
  return v;
}

Var Var::Obj(IUnknown* object) {
  Var v;
  V_VT(&v.v_) = VT_DISPATCH;
  V_DISPATCH(&v.v_) = nullptr;
  if (object != nullptr) {
    object->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&V_DISPATCH(&v.v_)));
  }
  return v;
}

Var Var::Empty() {
  return Var();
}

Var Var::Null() {
  Var v;
  V_VT(&v.v_) = VT_NULL;
  return v;
}

Var Var::Missing() {
  Var v;
  V_VT(&v.v_) = VT_ERROR;
  V_ERROR(&v.v_) = DISP_E_PARAMNOTFOUND;
  return v;
}

Var Var::Ref(VARIANT* target) {
  Var v;
  V_VT(&v.v_) = VT_BYREF | VT_VARIANT;
  V_VARIANTREF(&v.v_) = target;
  return v;
}

LONG Var::Long(LONG fallback) const {
  VARIANT out;
  ::VariantInit(&out);
  if (FAILED(::VariantChangeType(&out, const_cast<VARIANT*>(&v_), 0, VT_I4))) return fallback;
  return V_I4(&out);
}

double Var::Double() const {
  VARIANT out;
  ::VariantInit(&out);
  if (FAILED(::VariantChangeType(&out, const_cast<VARIANT*>(&v_), 0, VT_R8))) return -99999;
  return V_R8(&out);
}

bool Var::Bool() const {
  return Type() == VT_BOOL && V_BOOL(&v_) != VARIANT_FALSE;
}

std::wstring Var::Text() const {
  if (Type() != VT_BSTR || V_BSTR(&v_) == nullptr) return L"";
  return std::wstring(V_BSTR(&v_), ::SysStringLen(V_BSTR(&v_)));
}

IDispatch* Var::Object() const noexcept {
  return Type() == VT_DISPATCH ? V_DISPATCH(&v_) : nullptr;
}

Result Invoke(IDispatch* object, DISPID id, WORD flags, std::initializer_list<Var> args) {
  Result result;
  if (object == nullptr) {
    result.hr = E_POINTER;
    return result;
  }
  // IDispatch takes the arguments last first.
  std::vector<Var> reversed(args.begin(), args.end());
  std::vector<VARIANT> raw;
  for (auto it = reversed.rbegin(); it != reversed.rend(); ++it) raw.push_back(*it->get());
  DISPID named = DISPID_PROPERTYPUT;
  DISPPARAMS params = {raw.data(), nullptr, static_cast<UINT>(raw.size()), 0};
  if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) {
    params.rgdispidNamedArgs = &named;
    params.cNamedArgs = 1;
  }
  EXCEPINFO excep = {};
  UINT argErr = 0;
  const bool put = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  result.hr = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params,
                             put ? nullptr : result.value.get(), &excep, &argErr);
  if (result.hr == DISP_E_EXCEPTION) {
    result.scode = excep.scode != S_OK ? excep.scode : static_cast<HRESULT>(excep.wCode);
    if (excep.bstrDescription != nullptr) result.description = excep.bstrDescription;
    if (excep.bstrSource != nullptr) result.source = excep.bstrSource;
  }
  ::SysFreeString(excep.bstrDescription);
  ::SysFreeString(excep.bstrSource);
  ::SysFreeString(excep.bstrHelpFile);
  return result;
}

namespace {

DISPID IdOf(IDispatch* object, const wchar_t* name) {
  DISPID id = DISPID_UNKNOWN;
  LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
  if (object == nullptr ||
      FAILED(object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id))) {
    return DISPID_UNKNOWN;
  }
  return id;
}

}  // namespace

Result Call(IDispatch* object, const wchar_t* name, std::initializer_list<Var> args) {
  const DISPID id = IdOf(object, name);
  if (id == DISPID_UNKNOWN) {
    Result result;
    result.hr = DISP_E_UNKNOWNNAME;
    return result;
  }
  return Invoke(object, id, DISPATCH_METHOD | DISPATCH_PROPERTYGET, args);
}

Result Put(IDispatch* object, const wchar_t* name, const Var& value,
           std::initializer_list<Var> args) {
  const DISPID id = IdOf(object, name);
  if (id == DISPID_UNKNOWN) {
    Result result;
    result.hr = DISP_E_UNKNOWNNAME;
    return result;
  }
  // The new value is the last argument (rgvarg[0], named DISPID_PROPERTYPUT).
  std::vector<Var> all(args.begin(), args.end());
  all.push_back(value);
  Result result;
  switch (all.size()) {
    case 1:
      return Invoke(object, id, DISPATCH_PROPERTYPUT, {all[0]});
    case 2:
      return Invoke(object, id, DISPATCH_PROPERTYPUT, {all[0], all[1]});
    default:
      result.hr = E_INVALIDARG;
      return result;
  }
}

IDispatch* ObjectOf(const Result& result) {
  IDispatch* object = result.value.Object();
  if (object != nullptr) object->AddRef();
  return object;
}

}  // namespace t4test
