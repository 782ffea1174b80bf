#include "DispatchObject.h"

#include <new>

#include "StandInModule.h"
#include "StandInText.h"

namespace t4standin {

DispatchObject::DispatchObject(std::span<const DispatchMember> members) noexcept
    : members_(members) {
  StandInModule::ObjectCreated();
}

DispatchObject::~DispatchObject() {
  StandInModule::ObjectDestroyed();
}

HRESULT DispatchObject::QueryInterface(REFIID riid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IDispatch)) {
    *object = static_cast<IDispatch*>(this);
  } else {
    *object = QueryOther(riid);
  }
  if (*object == nullptr) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

ULONG DispatchObject::AddRef() noexcept {
  return static_cast<ULONG>(::InterlockedIncrement(&refs_));
}

ULONG DispatchObject::Release() noexcept {
  const LONG refs = ::InterlockedDecrement(&refs_);
  if (refs == 0) delete this;
  return static_cast<ULONG>(refs);
}

HRESULT DispatchObject::GetTypeInfoCount(UINT* count) noexcept {
  if (count == nullptr) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT DispatchObject::GetTypeInfo(UINT, LCID, ITypeInfo** info) noexcept {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  return DISP_E_BADINDEX;
}

HRESULT DispatchObject::GetIDsOfNames(REFIID riid, LPOLESTR* names, UINT count, LCID,
                                      DISPID* ids) noexcept {
  if (!IsEqualIID(riid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
  if (names == nullptr || ids == nullptr) return E_POINTER;
  if (count == 0) return S_OK;
  HRESULT hr = S_OK;
  ids[0] = DISPID_UNKNOWN;
  if (names[0] != nullptr) {
    for (const DispatchMember& member : members_) {
      if (StandInText::EqualNoCase(member.name, names[0])) {
        ids[0] = member.id;
        break;
      }
    }
  }
  if (ids[0] == DISPID_UNKNOWN) hr = DISP_E_UNKNOWNNAME;
  // No member takes named arguments.
  for (UINT i = 1; i < count; ++i) {
    ids[i] = DISPID_UNKNOWN;
    hr = DISP_E_UNKNOWNNAME;
  }
  return hr;
}

HRESULT DispatchObject::Invoke(DISPID id, REFIID riid, LCID, WORD flags, DISPPARAMS* params,
                               VARIANT* result, EXCEPINFO* excep, UINT* argErr) noexcept {
  if (!IsEqualIID(riid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
  if (params == nullptr) return E_INVALIDARG;
  const DispatchMember* member = nullptr;
  for (const DispatchMember& m : members_) {
    if (m.id == id) {
      member = &m;
      break;
    }
  }
  if (member == nullptr) return DISP_E_MEMBERNOTFOUND;
  if (result != nullptr) ::VariantInit(result);

  const bool put = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  if (put) {
    if ((member->access & kWrite) == 0) return DISP_E_MEMBERNOTFOUND;
    if (params->cArgs != 1) return DISP_E_BADPARAMCOUNT;
    if (params->cNamedArgs != 1 || params->rgdispidNamedArgs == nullptr ||
        params->rgdispidNamedArgs[0] != DISPID_PROPERTYPUT) {
      return DISP_E_PARAMNOTOPTIONAL;
    }
  } else {
    if ((flags & (DISPATCH_METHOD | DISPATCH_PROPERTYGET)) == 0) return DISP_E_MEMBERNOTFOUND;
    if ((member->access & kRead) == 0) return DISP_E_MEMBERNOTFOUND;
    if (params->cNamedArgs != 0) return DISP_E_NONAMEDARGS;
    if (params->cArgs > 0 && member->maxArgs == 0) {
      return InvokeDefaultOfResult(id, flags, params, result, excep, argErr);
    }
    if (params->cArgs < member->minArgs || params->cArgs > member->maxArgs) {
      return DISP_E_BADPARAMCOUNT;
    }
  }
  return SafeCall(id, flags, params, result, excep, argErr);
}

HRESULT DispatchObject::SafeCall(DISPID id, WORD flags, DISPPARAMS* params, VARIANT* result,
                                 EXCEPINFO* excep, UINT* argErr) noexcept {
  Invocation call(flags, params, result, excep, argErr);
  try {
    return Call(id, call);
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_UNEXPECTED;
  }
}

// `ns.Categories("Work")` reaches Categories with the argument meant for
// the collection's Item. Outlook (through OLE Automation's ITypeInfo::Invoke)
// then reads the property and passes the arguments to the default member of
// the object it got; scripts rely on that.
HRESULT DispatchObject::InvokeDefaultOfResult(DISPID id, WORD flags, DISPPARAMS* params,
                                              VARIANT* result, EXCEPINFO* excep,
                                              UINT* argErr) noexcept {
  DISPPARAMS none = {nullptr, nullptr, 0, 0};
  VARIANT object;
  ::VariantInit(&object);
  HRESULT hr = SafeCall(id, flags, &none, &object, excep, nullptr);
  if (FAILED(hr)) return hr;
  if (V_VT(&object) != VT_DISPATCH || V_DISPATCH(&object) == nullptr) {
    ::VariantClear(&object);
    return DISP_E_BADPARAMCOUNT;
  }
  hr = V_DISPATCH(&object)->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, flags, params,
                                   result, excep, argErr);
  ::VariantClear(&object);
  return hr;
}

}  // namespace t4standin
