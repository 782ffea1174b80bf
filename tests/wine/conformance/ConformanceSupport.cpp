#include "ConformanceSupport.h"

#include "Automation.h"

namespace t4test {

_Application* NewApplicationOrFail(const std::string& what) {
  return CreateOrFail<_Application>(CLSID_Application, IID__Application, what,
                                    "Application not created");
}

IDispatch* NewOutlookStandInOrFail(const std::string& what) {
  CLSID clsid = GUID_NULL;
  if (FAILED(::CLSIDFromProgID(L"Tandrel4Test.Outlook", &clsid))) clsid = GUID_NULL;
  return CreateOrFail<IDispatch>(clsid, IID_IDispatch, what,
                                 "the Outlook stand-in is not registered");
}

ULONG RefCount(IUnknown* object) {
  object->AddRef();
  return object->Release();
}

IUnknown* IdentityOf(IUnknown* object) {
  IUnknown* identity = nullptr;
  if (FAILED(object->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&identity)))) {
    return nullptr;
  }
  identity->Release();  // still held through `object`
  return identity;
}

HRESULT DllCanUnloadNowOfLibrary() {
  HMODULE module = ::GetModuleHandleW(L"Tandrel4.dll");
  if (module == nullptr) return E_FAIL;
  using Function = HRESULT(STDAPICALLTYPE*)();
  auto canUnload = reinterpret_cast<Function>(
      reinterpret_cast<void*>(::GetProcAddress(module, "DllCanUnloadNow")));
  return canUnload != nullptr ? canUnload() : E_FAIL;
}

VARIANT MissingArgument() {
  VARIANT v;
  V_VT(&v) = VT_ERROR;
  V_ERROR(&v) = DISP_E_PARAMNOTFOUND;
  return v;
}

_Category* AddCategory(_Categories* cats, const wchar_t* name, bool inMasterlist) {
  BSTR text = ::SysAllocString(name);
  _Category* category = nullptr;
  const HRESULT hr = cats->Add(text, inMasterlist ? VARIANT_TRUE : VARIANT_FALSE, MissingArgument(),
                               MissingArgument(), MissingArgument(), &category);
  ::SysFreeString(text);
  return SUCCEEDED(hr) ? category : nullptr;
}

std::wstring NameOf(_Category* category) {
  BSTR name = nullptr;
  if (category == nullptr || FAILED(category->get_Name(&name))) return L"<none>";
  return TakeBstr(name);
}

}  // namespace t4test
