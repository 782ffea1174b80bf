// The Application class of the registered DLL through its vtable and
// IDispatch, as a C++ client uses it.

#include "ApplicationTests.h"

#include <ocidl.h>
#include <olectl.h>
#include <windows.h>

#include <string>
#include <vector>

#include "Automation.h"
#include "CategoryRulesTests.h"
#include "ConformanceSupport.h"
#include "DispatchProbe.h"
#include "TestLog.h"
#include "com/Tandrel4_h.h"

namespace t4test {

namespace {

// A minimal event sink: counts references so the test can see the
// connection point let go of it.
class Sink final : public t4test::StackDispatch {
 public:
  Sink() noexcept : StackDispatch(DIID___Application) {}
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    return S_OK;
  }
};

}  // namespace

void TestApplicationIdentity() {
  _Application* app = NewApplicationOrFail("identity");
  if (app == nullptr) return;
  TestLog::Check(app->AddRef() == 2, "AddRef after creation returns 2");
  TestLog::Check(app->Release() == 1, "Release returns 1");

  IUnknown* unknown = nullptr;
  IDispatch* dispatch = nullptr;
  _ILanguage* language = nullptr;
  ISupportErrorInfo* support = nullptr;
  IConnectionPointContainer* container = nullptr;
  IProvideClassInfo2* classInfo = nullptr;
  TestLog::CheckHr(app->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&unknown)), S_OK,
                   "QI Application IUnknown");
  TestLog::CheckHr(app->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&dispatch)), S_OK,
                   "QI Application IDispatch");
  TestLog::CheckHr(app->QueryInterface(IID__ILanguage, reinterpret_cast<void**>(&language)), S_OK,
                   "QI Application _ILanguage");
  TestLog::CheckHr(app->QueryInterface(IID_ISupportErrorInfo, reinterpret_cast<void**>(&support)),
                   S_OK, "QI Application ISupportErrorInfo");
  TestLog::CheckHr(
      app->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&container)),
      S_OK, "QI Application IConnectionPointContainer");
  TestLog::CheckHr(
      app->QueryInterface(IID_IProvideClassInfo2, reinterpret_cast<void**>(&classInfo)), S_OK,
      "QI Application IProvideClassInfo2");
  IUnknown* none = reinterpret_cast<IUnknown*>(1);
  TestLog::CheckHr(app->QueryInterface(IID_IPersist, reinterpret_cast<void**>(&none)),
                   E_NOINTERFACE, "QI Application IPersist");
  TestLog::Check(none == nullptr, "failed QI sets the pointer to null");
  TestLog::CheckHr(app->QueryInterface(IID__Category, reinterpret_cast<void**>(&none)),
                   E_NOINTERFACE, "QI Application _Category");
  TestLog::CheckHr(app->QueryInterface(IID__Application, nullptr), E_POINTER,
                   "QI with a null out pointer");
  TestLog::Check(RefCount(app) == 7, "six successful QIs count six references",
                 "count " + std::to_string(RefCount(app)));

  if (unknown && dispatch && language && support) {
    TestLog::Check(IdentityOf(app) == unknown && IdentityOf(language) == unknown &&
                       IdentityOf(support) == unknown && IdentityOf(dispatch) == unknown &&
                       IdentityOf(container) == unknown && IdentityOf(classInfo) == unknown,
                   "IUnknown is the same from every interface");
    TestLog::Check(static_cast<IUnknown*>(dispatch) == static_cast<IUnknown*>(app),
                   "IDispatch is the default interface _Application");
    _Application* back = nullptr;
    language->QueryInterface(IID__Application, reinterpret_cast<void**>(&back));
    TestLog::Check(back == app, "QI from _ILanguage back to _Application gives the same pointer");
    if (back != nullptr) back->Release();
    _ILanguage* viaMethod = nullptr;
    TestLog::CheckHr(app->ToILanguage(&viaMethod), S_OK, "ToILanguage succeeds");
    TestLog::Check(viaMethod == language, "ToILanguage returns the _ILanguage interface");
    if (viaMethod != nullptr) viaMethod->Release();

    TestLog::CheckHr(support->InterfaceSupportsErrorInfo(IID__Application), S_OK,
                     "ISupportErrorInfo _Application");
    TestLog::CheckHr(support->InterfaceSupportsErrorInfo(IID__ILanguage), S_OK,
                     "ISupportErrorInfo _ILanguage");
    TestLog::CheckHr(support->InterfaceSupportsErrorInfo(IID__Category), S_FALSE,
                     "ISupportErrorInfo of a foreign interface");
  }
  if (classInfo != nullptr) {
    ITypeInfo* info = nullptr;
    if (TestLog::CheckHr(classInfo->GetClassInfo(&info), S_OK, "GetClassInfo")) {
      TYPEATTR* attr = nullptr;
      info->GetTypeAttr(&attr);
      TestLog::Check(
          attr && attr->typekind == TKIND_COCLASS && IsEqualCLSID(attr->guid, CLSID_Application),
          "GetClassInfo describes coclass Application");
      if (attr != nullptr) info->ReleaseTypeAttr(attr);
      TestLog::Check(t4test::MemberName(info, MEMBERID_NIL) == L"Application",
                     "coclass name is Application");
      info->Release();
    }
    GUID source = GUID_NULL;
    TestLog::CheckHr(classInfo->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &source), S_OK,
                     "GetGUID default source");
    TestLog::Check(IsEqualIID(source, DIID___Application), "default source is __Application");
  }

  for (IUnknown* held :
       std::vector<IUnknown*>{unknown, dispatch, language, support, container, classInfo}) {
    if (held != nullptr) held->Release();
  }
  TestLog::Check(RefCount(app) == 1, "count back to 1 after releasing the QIs");
  TestLog::Check(app->Release() == 0, "last Release returns 0");
}

void TestApplicationDispatch() {
  _Application* app = NewApplicationOrFail("dispatch");
  if (app == nullptr) return;
  UINT count = 0;
  TestLog::CheckHr(app->GetTypeInfoCount(&count), S_OK, "GetTypeInfoCount");
  TestLog::Check(count == 1, "GetTypeInfoCount is 1");
  ITypeInfo* info = nullptr;
  if (TestLog::CheckHr(app->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info), S_OK, "GetTypeInfo(0)")) {
    TestLog::Check(t4test::MemberName(info, MEMBERID_NIL) == L"_Application",
                   "GetTypeInfo describes _Application");
    info->Release();
  }
  TestLog::CheckHr(app->GetTypeInfo(1, LOCALE_USER_DEFAULT, &info), DISP_E_BADINDEX,
                   "GetTypeInfo(1)");

  const struct {
    const wchar_t* name;
    DISPID id;
  } names[] = {{L"ToILanguage", 1},
               {L"BatchMode", 2},
               {L"ReadMasterlist", 8},
               {L"readmasterlist", 8},
               {L"UndoIsPossible", 15}};
  for (const auto& entry : names) {
    DISPID id = 0;
    LPOLESTR name = const_cast<LPOLESTR>(entry.name);
    const HRESULT hr = app->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
    TestLog::Check(hr == S_OK && id == entry.id, "GetIDsOfNames " + TestLog::Utf8(entry.name),
                   TestLog::Hex(hr) + " id " + std::to_string(id));
  }
  DISPID id = 0;
  LPOLESTR unknownName = const_cast<LPOLESTR>(L"NoSuchMember");
  TestLog::CheckHr(app->GetIDsOfNames(IID_NULL, &unknownName, 1, LOCALE_USER_DEFAULT, &id),
                   DISP_E_UNKNOWNNAME, "GetIDsOfNames of an unknown name");
  TestLog::Check(id == DISPID_UNKNOWN, "unknown name gets DISPID_UNKNOWN");
  LPOLESTR languageName = const_cast<LPOLESTR>(L"LanguageID");
  TestLog::CheckHr(app->GetIDsOfNames(IID_NULL, &languageName, 1, LOCALE_USER_DEFAULT, &id),
                   DISP_E_UNKNOWNNAME, "_Application has no LanguageID (it is on _ILanguage)");
  TestLog::CheckHr(app->GetIDsOfNames(IID__Application, &unknownName, 1, LOCALE_USER_DEFAULT, &id),
                   DISP_E_UNKNOWNINTERFACE, "GetIDsOfNames with a non-null riid");

  // ToILanguage through Invoke hands out the _ILanguage view.
  DISPPARAMS none = {nullptr, nullptr, 0, 0};
  VARIANT result;
  ::VariantInit(&result);
  HRESULT hr = app->Invoke(1, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, &result,
                           nullptr, nullptr);
  _ILanguage* language = nullptr;
  if (TestLog::Check(hr == S_OK && V_VT(&result) == VT_DISPATCH && V_DISPATCH(&result) != nullptr,
                     "Invoke ToILanguage returns an object", TestLog::Hex(hr))) {
    V_DISPATCH(&result)->QueryInterface(IID__ILanguage, reinterpret_cast<void**>(&language));
  }
  ::VariantClear(&result);
  if (language != nullptr) {
    // The _ILanguage view answers with its own names and dispatch ids.
    LPOLESTR name = const_cast<LPOLESTR>(L"LanguageID");
    DISPID languageId = 0;
    TestLog::Check(
        language->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &languageId) == S_OK &&
            languageId == 1,
        "_ILanguage GetIDsOfNames LanguageID");
    auto get = [&]() -> LONG {
      VARIANT value;
      ::VariantInit(&value);
      const HRESULT getHr = language->Invoke(1, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                                             &none, &value, nullptr, nullptr);
      const LONG n = (getHr == S_OK && V_VT(&value) == VT_I4) ? V_I4(&value) : -1;
      ::VariantClear(&value);
      return n;
    };
    auto put = [&](VARIANT value) -> HRESULT {
      DISPID named = DISPID_PROPERTYPUT;
      DISPPARAMS params = {&value, &named, 1, 1};
      EXCEPINFO excep = {};
      UINT argErr = 0;
      const HRESULT putHr = language->Invoke(1, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT,
                                             &params, nullptr, &excep, &argErr);
      ::SysFreeString(excep.bstrDescription);
      ::SysFreeString(excep.bstrSource);
      ::SysFreeString(excep.bstrHelpFile);
      return putHr;
    };
    VARIANT value;
    V_VT(&value) = VT_I4;
    TestLog::Check(get() == 1031, "Invoke LanguageID get is 1031 at first");
    V_I4(&value) = 1033;
    TestLog::CheckHr(put(value), S_OK, "Invoke LanguageID put 1033");
    TestLog::Check(get() == 1033, "Invoke LanguageID get after put 1033");
    V_I4(&value) = 1036;
    TestLog::CheckHr(put(value), S_OK, "Invoke LanguageID put 1036");
    TestLog::Check(get() == 1031, "LanguageID 1036 stores 1031");
    V_VT(&value) = VT_BSTR;
    V_BSTR(&value) = ::SysAllocString(L"1033");
    TestLog::CheckHr(put(value), S_OK, "Invoke LanguageID put \"1033\" (coerced)");
    ::SysFreeString(V_BSTR(&value));
    TestLog::Check(get() == 1033, "LanguageID from text 1033");
    V_BSTR(&value) = ::SysAllocString(L"abc");
    TestLog::CheckHr(put(value), DISP_E_TYPEMISMATCH, "Invoke LanguageID put \"abc\"");
    ::SysFreeString(V_BSTR(&value));
    TestLog::Check(get() == 1033, "a rejected value leaves LanguageID");
    V_VT(&value) = VT_I4;
    V_I4(&value) = 0;
    TestLog::CheckHr(put(value), S_OK, "Invoke LanguageID put 0");
    TestLog::Check(get() == 1031, "LanguageID 0 stores 1031");

    IDispatch* languages = reinterpret_cast<IDispatch*>(1);
    TestLog::CheckHr(language->get_SupportedLanguages(&languages), S_OK, "SupportedLanguages");
    TestLog::Check(languages == nullptr, "SupportedLanguages is Nothing");
    language->Release();
  }

  // An error of the core through IDispatch: DISP_E_EXCEPTION with the
  // error. Without Outlook there is no master list to read (91).
  EXCEPINFO excep = {};
  hr = app->Invoke(8, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, nullptr, &excep,
                   nullptr);
  TestLog::CheckHr(hr, DISP_E_EXCEPTION, "Invoke ReadMasterlist raises");
  TestLog::Check(excep.scode == static_cast<HRESULT>(0x800A005B), "EXCEPINFO scode is 91",
                 TestLog::Hex(excep.scode));
  TestLog::Check(
      excep.bstrDescription != nullptr &&
          std::wstring(excep.bstrDescription) == L"Object variable or With block variable not set",
      "EXCEPINFO description", TestLog::Utf8(excep.bstrDescription));
  TestLog::Check(
      excep.bstrSource != nullptr &&
          std::wstring(excep.bstrSource) == L"Tandrel4; Tandrel4.Application.ReadMasterlist (0)",
      "EXCEPINFO source", TestLog::Utf8(excep.bstrSource));
  ::SysFreeString(excep.bstrDescription);
  ::SysFreeString(excep.bstrSource);
  ::SysFreeString(excep.bstrHelpFile);

  TestLog::CheckHr(app->Invoke(999, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, nullptr,
                               nullptr, nullptr),
                   DISP_E_MEMBERNOTFOUND, "Invoke of an unknown DISPID");
  TestLog::CheckHr(app->Invoke(8, IID__Application, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none,
                               nullptr, nullptr, nullptr),
                   DISP_E_UNKNOWNINTERFACE, "Invoke with a non-null riid");
  TestLog::Check(app->Release() == 0, "dispatch test object released to 0");
}

void TestApplicationConnectionPoint() {
  auto* container =
      CreateOrFail<IConnectionPointContainer>(CLSID_Application, IID_IConnectionPointContainer,
                                              "connection points", "Application not created");
  if (container == nullptr) return;
  IConnectionPoint* point = nullptr;
  TestLog::CheckHr(container->FindConnectionPoint(IID_IDispatch, &point), CONNECT_E_NOCONNECTION,
                   "FindConnectionPoint of a foreign interface");
  if (!TestLog::CheckHr(container->FindConnectionPoint(DIID___Application, &point), S_OK,
                        "FindConnectionPoint __Application")) {
    container->Release();
    return;
  }
  IID iid = GUID_NULL;
  point->GetConnectionInterface(&iid);
  TestLog::Check(IsEqualIID(iid, DIID___Application), "GetConnectionInterface is __Application");
  IConnectionPointContainer* back = nullptr;
  point->GetConnectionPointContainer(&back);
  TestLog::Check(back == container, "GetConnectionPointContainer is the object");
  if (back != nullptr) back->Release();

  Sink sink;
  DWORD first = 0;
  DWORD second = 0;
  TestLog::CheckHr(point->Advise(&sink, &first), S_OK, "Advise a sink");
  TestLog::CheckHr(point->Advise(&sink, &second), S_OK, "Advise a second time");
  TestLog::Check(first != 0 && second != 0 && first != second, "cookies are distinct and not 0");
  TestLog::Check(sink.refs == 3, "the connection point holds the sink",
                 "count " + std::to_string(sink.refs));
  TestLog::CheckHr(point->Unadvise(first), S_OK, "Unadvise the first cookie");
  TestLog::CheckHr(point->Unadvise(first), CONNECT_E_NOCONNECTION, "Unadvise it again");
  TestLog::CheckHr(point->Unadvise(12345), CONNECT_E_NOCONNECTION, "Unadvise an unknown cookie");
  TestLog::CheckHr(point->Unadvise(second), S_OK, "Unadvise the second cookie");
  TestLog::Check(sink.refs == 1, "Unadvise releases the sink");
  DWORD cookie = 1;
  TestLog::CheckHr(point->Advise(nullptr, &cookie), E_POINTER, "Advise of no sink");

  IEnumConnectionPoints* points = nullptr;
  if (TestLog::CheckHr(container->EnumConnectionPoints(&points), S_OK, "EnumConnectionPoints")) {
    IConnectionPoint* listed[2] = {};
    ULONG fetched = 0;
    points->Next(2, listed, &fetched);
    TestLog::Check(fetched == 1 && listed[0] == point, "one connection point is listed");
    for (ULONG i = 0; i < fetched; ++i) listed[i]->Release();
    points->Release();
  }
  // The connection point keeps the object alive.
  TestLog::Check(container->Release() == 1, "the connection point holds the object");
  TestLog::Check(point->Release() == 0, "releasing the connection point ends the object");
}

void TestOutlookSession() {
  IDispatch* outlook = NewOutlookStandInOrFail("Outlook session");
  if (outlook == nullptr) return;
  using t4test::Call;
  using t4test::Put;
  using t4test::Var;
  Call(outlook, L"Reset");
  Put(outlook, L"Version", Var::Str(L"12.0.4518"));
  IDispatch* ns = t4test::ObjectOf(Call(outlook, L"GetNamespace", {Var::Str(L"MAPI")}));
  IDispatch* olCats = ns != nullptr ? t4test::ObjectOf(Call(ns, L"Categories")) : nullptr;
  if (!TestLog::Check(olCats != nullptr, "the stand-in's categories")) {
    if (ns != nullptr) ns->Release();
    outlook->Release();
    return;
  }
  Call(olCats, L"Add", {Var::Str(L"Work"), Var::I4(5), Var::I4(4)});
  const ULONG outlookRefs = RefCount(outlook);

  _Application* app = nullptr;
  if (!TestLog::CheckHr(::CoCreateInstance(CLSID_Application, nullptr, CLSCTX_INPROC_SERVER,
                                           IID__Application, reinterpret_cast<void**>(&app)),
                        S_OK, "Application for the Outlook session")) {
    olCats->Release();
    ns->Release();
    outlook->Release();
    return;
  }
  TestLog::CheckHr(app->Initialize(outlook), S_OK, "Initialize with the stand-in of Outlook 2007");
  VARIANT_BOOL supported = VARIANT_FALSE;
  app->get_RulesSupported(&supported);
  TestLog::Check(supported == VARIANT_TRUE, "RulesSupported through the vtable");
  TestLog::Check(RefCount(outlook) > outlookRefs, "the library holds Outlook while bound");
  TestLog::CheckHr(app->ReadMasterlist(), S_OK, "ReadMasterlist through the vtable");
  _Categories* cats = nullptr;
  app->get_Categories(&cats);
  LONG count = 0;
  VARIANT ignore;
  V_VT(&ignore) = VT_BOOL;
  V_BOOL(&ignore) = VARIANT_TRUE;
  if (cats != nullptr) cats->get_Count(ignore, &count);
  TestLog::Check(count == 2, "the default category and Work are read",
                 "count " + std::to_string(count));
  _Category* added = nullptr;
  if (cats != nullptr) {
    BSTR name = ::SysAllocString(L"Errands");
    VARIANT missing;
    V_VT(&missing) = VT_ERROR;
    V_ERROR(&missing) = DISP_E_PARAMNOTFOUND;
    cats->Add(name, VARIANT_TRUE, missing, missing, missing, &added);
    ::SysFreeString(name);
  }
  TestLog::CheckHr(app->SaveChanges(), S_OK, "SaveChanges through the vtable");
  BSTR id = nullptr;
  if (added != nullptr) added->get_CategoryID(&id);
  TestLog::Check(::SysStringLen(id) == 38, "the added category took Outlook's CategoryID",
                 TestLog::Utf8(id));
  ::SysFreeString(id);
  TestLog::Check(Call(olCats, L"Count").value.Long() == 2, "Outlook holds the added category");

  TestLog::CheckHr(app->Terminate(), S_OK, "Terminate ends the Outlook session");
  TestLog::Check(RefCount(outlook) == outlookRefs, "Terminate releases Outlook",
                 std::to_string(RefCount(outlook)) + " of " + std::to_string(outlookRefs));
  TestLog::Check(Call(outlook, L"SinkCount").value.Long() == 0,
                 "Terminate unadvises the Quit sink");
  TestLog::Check(Call(outlook, L"LogoffCount").value.Long() == 1, "Terminate logs off");
  TestLog::CheckHr(DllCanUnloadNowOfLibrary(), S_FALSE,
                   "DllCanUnloadNow while the terminated Application is held");
  if (added != nullptr) {
    TestLog::Check(added->Release() == 0, "the held category released to 0 after Terminate");
  }
  if (cats != nullptr) {
    TestLog::Check(cats->Release() == 0, "the held Categories released to 0 after Terminate");
  }
  TestLog::Check(app->Release() == 0, "the Outlook-bound Application released to 0");
  TestLog::CheckHr(DllCanUnloadNowOfLibrary(), S_OK,
                   "DllCanUnloadNow after an Outlook session, Terminate and release");

  TestRulesComponent(outlook, ns, olCats, outlookRefs);
  Call(outlook, L"Reset");
  olCats->Release();
  ns->Release();
  outlook->Release();
}

}  // namespace t4test
