#include "Automation.h"

#include <vector>

namespace t4test {

namespace {

// A Var of type `type` whose value `set` writes. The type goes in last, as
// a DECIMAL's first field overlays it.
template <class Set>
Var Make(VARTYPE type, Set set) {
  Var v;
  set(v.get());
  V_VT(v.get()) = type;
  return v;
}

}  // namespace

Var Var::I4(LONG value) {
  return Make(VT_I4, [&](VARIANT* v) { V_I4(v) = value; });
}

Var Var::I2(SHORT value) {
  return Make(VT_I2, [&](VARIANT* v) { V_I2(v) = value; });
}

Var Var::UI1(BYTE value) {
  return Make(VT_UI1, [&](VARIANT* v) { V_UI1(v) = value; });
}

Var Var::R4(float value) {
  return Make(VT_R4, [&](VARIANT* v) { V_R4(v) = value; });
}

Var Var::R8(double value) {
  return Make(VT_R8, [&](VARIANT* v) { V_R8(v) = value; });
}

Var Var::Cy(LONGLONG tenThousandths) {
  return Make(VT_CY, [&](VARIANT* v) { V_CY(v).int64 = tenThousandths; });
}

Var Var::Dec(LONG units, BYTE scale) {
  return Make(VT_DECIMAL, [&](VARIANT* v) {
    DECIMAL d = {};
    d.scale = scale;
    d.sign = units < 0 ? DECIMAL_NEG : 0;
    d.Lo32 = static_cast<ULONG>(units < 0 ? -units : units);
    V_DECIMAL(v) = d;
  });
}

Var Var::Date(double value) {
  return Make(VT_DATE, [&](VARIANT* v) { V_DATE(v) = value; });
}

Var Var::Bool(bool value) {
  return Make(VT_BOOL, [&](VARIANT* v) { V_BOOL(v) = value ? VARIANT_TRUE : VARIANT_FALSE; });
}

Var Var::Str(const wchar_t* text) {
  return Make(VT_BSTR, [&](VARIANT* v) { V_BSTR(v) = ::SysAllocString(text); });
}

Var Var::Obj(IUnknown* object) {
  return Make(VT_DISPATCH, [&](VARIANT* v) {
    V_DISPATCH(v) = nullptr;
    if (object != nullptr) {
      object->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&V_DISPATCH(v)));
    }
  });
}

Var Var::Empty() {
  return Var();
}

Var Var::Null() {
  return Make(VT_NULL, [](VARIANT*) {});
}

Var Var::Missing() {
  return Make(VT_ERROR, [](VARIANT* v) { V_ERROR(v) = DISP_E_PARAMNOTFOUND; });
}

Var Var::Ref(VARIANT* target) {
  return Make(VT_BYREF | VT_VARIANT, [&](VARIANT* v) { V_VARIANTREF(v) = target; });
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

std::wstring TakeBstr(BSTR text) {
  std::wstring result = text != nullptr ? std::wstring(text, ::SysStringLen(text)) : L"";
  ::SysFreeString(text);
  return result;
}

ErrorInfoFields TakeErrorInfo() {
  ErrorInfoFields fields;
  IErrorInfo* info = nullptr;
  if (::GetErrorInfo(0, &info) != S_OK || info == nullptr) return fields;
  fields.present = true;
  BSTR text = nullptr;
  info->GetSource(&text);
  fields.source = TakeBstr(text);
  text = nullptr;
  info->GetDescription(&text);
  fields.description = TakeBstr(text);
  text = nullptr;
  info->GetHelpFile(&text);
  fields.helpFile = TakeBstr(text);
  info->GetHelpContext(&fields.helpContext);
  info->GetGUID(&fields.guid);
  info->Release();
  return fields;
}

}  // namespace t4test
