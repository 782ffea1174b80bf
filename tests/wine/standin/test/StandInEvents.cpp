// Checks the COM side of the Outlook stand-in that scripts cannot reach:
// the connection points of the Application (found, enumerated, advised
// with both kinds of sink, Quit fired the way Outlook fires it, unadvised),
// the Application without events, the dispatch corner cases (by-reference
// and left-out arguments, named arguments, foreign IIDs), rule category
// arrays as a typed client passes them, and DllCanUnloadNow. Prints PASS/FAIL lines and the
// SUMMARY.

#include <ocidl.h>
#include <olectl.h>
#include <windows.h>

#include <string>

#include "Automation.h"
#include "RecordingSink.h"
#include "TestLog.h"

using t4test::Call;
using t4test::ObjectOf;
using t4test::Put;
using t4test::RecordingSink;
using t4test::Result;
using t4test::TestLog;
using t4test::Var;

namespace {

const CLSID kClsidApplication = {
    0x6a0f1b52, 0x3c4d, 0x4e8a, {0x9b, 0x71, 0x2d, 0x5e, 0x8c, 0x1f, 0x0a, 0x01}};
const CLSID kClsidNoEvents = {
    0x6a0f1b52, 0x3c4d, 0x4e8a, {0x9b, 0x71, 0x2d, 0x5e, 0x8c, 0x1f, 0x0a, 0x02}};
const CLSID kClsidSession = {
    0x6a0f1b52, 0x3c4d, 0x4e8a, {0x9b, 0x71, 0x2d, 0x5e, 0x8c, 0x1f, 0x0a, 0x03}};
const IID kApplicationEvents = {
    0x0006304e, 0x0000, 0x0000, {0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
const IID kApplicationEvents11 = {
    0x0006302c, 0x0000, 0x0000, {0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
constexpr DISPID kQuit = 61447;

IDispatch* Create(const wchar_t* progId) {
  CLSID clsid{};
  if (FAILED(::CLSIDFromProgID(progId, &clsid))) return nullptr;
  IDispatch* object = nullptr;
  ::CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                     reinterpret_cast<void**>(&object));
  return object;
}

long SinkCount(IDispatch* app) {
  return Call(app, L"SinkCount").value.Long();
}

void CheckProgIds() {
  CLSID clsid{};
  bool ok = SUCCEEDED(::CLSIDFromProgID(L"Tandrel4Test.Outlook", &clsid)) &&
            IsEqualCLSID(clsid, kClsidApplication);
  ok = ok && SUCCEEDED(::CLSIDFromProgID(L"Tandrel4Test.OutlookNoEvents", &clsid)) &&
       IsEqualCLSID(clsid, kClsidNoEvents);
  ok = ok && SUCCEEDED(::CLSIDFromProgID(L"dimdo.dimdosession", &clsid)) &&
       IsEqualCLSID(clsid, kClsidSession);
  TestLog::Check(ok, "the three ProgIDs name the documented CLSIDs");
}

void CheckConnectionPoints(IDispatch* app) {
  IConnectionPointContainer* container = nullptr;
  HRESULT hr =
      app->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&container));
  if (!TestLog::CheckHr(hr, S_OK, "Application answers IConnectionPointContainer")) return;

  IEnumConnectionPoints* points = nullptr;
  hr = container->EnumConnectionPoints(&points);
  bool sawEvents = false, sawEvents11 = false;
  int count = 0;
  if (SUCCEEDED(hr)) {
    IConnectionPoint* point = nullptr;
    ULONG fetched = 0;
    while (points->Next(1, &point, &fetched) == S_OK && fetched == 1) {
      IID iid{};
      point->GetConnectionInterface(&iid);
      sawEvents = sawEvents || IsEqualIID(iid, kApplicationEvents);
      sawEvents11 = sawEvents11 || IsEqualIID(iid, kApplicationEvents11);
      ++count;
      point->Release();
    }
    points->Release();
  }
  TestLog::Check(SUCCEEDED(hr) && count == 2 && sawEvents && sawEvents11,
                 "EnumConnectionPoints lists ApplicationEvents and ApplicationEvents_11",
                 "hr " + TestLog::Hex(hr) + ", " + std::to_string(count) + " points");

  IConnectionPoint* events = nullptr;
  IConnectionPoint* events11 = nullptr;
  TestLog::CheckHr(container->FindConnectionPoint(kApplicationEvents, &events), S_OK,
                   "FindConnectionPoint(ApplicationEvents)");
  TestLog::CheckHr(container->FindConnectionPoint(kApplicationEvents11, &events11), S_OK,
                   "FindConnectionPoint(ApplicationEvents_11)");
  IConnectionPoint* none = nullptr;
  TestLog::CheckHr(container->FindConnectionPoint(IID_IDispatch, &none), CONNECT_E_NOCONNECTION,
                   "FindConnectionPoint of another interface");
  TestLog::Check(none == nullptr, "no connection point handed out for another interface");
  if (events == nullptr || events11 == nullptr) {
    if (events != nullptr) events->Release();
    if (events11 != nullptr) events11->Release();
    container->Release();
    return;
  }

  IID iid{};
  events11->GetConnectionInterface(&iid);
  TestLog::Check(IsEqualIID(iid, kApplicationEvents11), "GetConnectionInterface");
  IConnectionPointContainer* back = nullptr;
  events->GetConnectionPointContainer(&back);
  IUnknown* a = nullptr;
  IUnknown* b = nullptr;
  if (back != nullptr) back->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&a));
  app->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&b));
  TestLog::Check(a != nullptr && a == b,
                 "GetConnectionPointContainer leads back to the Application");
  if (a != nullptr) a->Release();
  if (b != nullptr) b->Release();
  if (back != nullptr) back->Release();

  // A script-style sink on ApplicationEvents, a sink that answers only the
  // event interface on ApplicationEvents_11.
  RecordingSink scriptSink(kApplicationEvents, true);
  RecordingSink typedSink(kApplicationEvents11, false);
  DWORD cookie1 = 0, cookie2 = 0;
  TestLog::CheckHr(events->Advise(&scriptSink, &cookie1), S_OK,
                   "Advise an IDispatch sink on ApplicationEvents");
  TestLog::CheckHr(events11->Advise(&typedSink, &cookie2), S_OK,
                   "Advise a sink answering only ApplicationEvents_11");
  TestLog::Check(cookie1 != 0 && cookie2 != 0, "cookies are not 0");
  TestLog::Check(scriptSink.refs == 2 && typedSink.refs == 2, "each advised sink is held once",
                 std::to_string(scriptSink.refs) + " " + std::to_string(typedSink.refs));
  TestLog::Check(SinkCount(app) == 2, "SinkCount counts the sinks of both points",
                 std::to_string(SinkCount(app)));

  RecordingSink stranger(IID_IPersist, false);
  DWORD cookie3 = 0;
  TestLog::CheckHr(events11->Advise(&stranger, &cookie3), CONNECT_E_CANNOTCONNECT,
                   "Advise refuses a sink answering neither IDispatch nor the event interface");
  TestLog::CheckHr(events->Advise(nullptr, &cookie3), E_POINTER, "Advise of no sink");

  Result fired = Call(app, L"FireQuit");
  TestLog::CheckHr(fired.hr, S_OK, "FireQuit");
  auto isQuit = [](const RecordingSink& sink) {
    return sink.events.size() == 1 && sink.events[0].id == kQuit &&
           sink.events[0].flags == DISPATCH_METHOD && sink.events[0].args == 0;
  };
  TestLog::Check(isQuit(scriptSink), "the IDispatch sink got Quit (DISPID 61447, method, no args)",
                 std::to_string(scriptSink.events.size()) + " calls");
  TestLog::Check(isQuit(typedSink), "the ApplicationEvents_11 sink got Quit",
                 std::to_string(typedSink.events.size()) + " calls");

  // An add-in unadvises on Quit, from inside the event.
  RecordingSink leaving(kApplicationEvents11, true);
  DWORD cookie4 = 0;
  events11->Advise(&leaving, &cookie4);
  leaving.react = [&] {
    TestLog::CheckHr(events11->Unadvise(cookie4), S_OK, "Unadvise from inside Quit");
  };
  scriptSink.events.clear();
  typedSink.events.clear();
  Call(app, L"FireQuit");
  TestLog::Check(
      leaving.events.size() == 1 && scriptSink.events.size() == 1 && typedSink.events.size() == 1,
      "a sink leaving during Quit disturbs no other sink");
  TestLog::Check(leaving.refs == 1, "the sink that left is released", std::to_string(leaving.refs));

  TestLog::CheckHr(events->Unadvise(cookie1), S_OK, "Unadvise ApplicationEvents");
  TestLog::CheckHr(events11->Unadvise(cookie2), S_OK, "Unadvise ApplicationEvents_11");
  TestLog::CheckHr(events->Unadvise(cookie1), CONNECT_E_NOCONNECTION, "Unadvise twice");
  TestLog::Check(SinkCount(app) == 0, "SinkCount is 0 after Unadvise",
                 std::to_string(SinkCount(app)));
  TestLog::Check(scriptSink.refs == 1 && typedSink.refs == 1, "Unadvise releases the sinks");
  scriptSink.events.clear();
  typedSink.events.clear();
  Call(app, L"FireQuit");
  TestLog::Check(scriptSink.events.empty() && typedSink.events.empty(),
                 "no Quit reaches an unadvised sink");

  events->Release();
  events11->Release();
  container->Release();
}

void CheckNoEvents() {
  IDispatch* app = Create(L"Tandrel4Test.OutlookNoEvents");
  if (!TestLog::Check(app != nullptr, "create Tandrel4Test.OutlookNoEvents")) return;
  IConnectionPointContainer* container = nullptr;
  TestLog::CheckHr(
      app->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&container)),
      E_NOINTERFACE, "the Application without events has no connection points");
  TestLog::Check(container == nullptr, "and hands out no pointer");
  TestLog::Check(Call(app, L"Version").value.Text() == L"11.0.0.8312",
                 "the Application without events answers Version");
  app->Release();
}

void CheckDispatch(IDispatch* app) {
  UINT count = 99;
  TestLog::Check(app->GetTypeInfoCount(&count) == S_OK && count == 0, "GetTypeInfoCount is 0");
  DISPID ids[2] = {};
  LPOLESTR names[2] = {const_cast<LPOLESTR>(L"vErSiOn"), const_cast<LPOLESTR>(L"Type")};
  TestLog::CheckHr(app->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, ids), S_OK,
                   "GetIDsOfNames ignores letter case");
  TestLog::CheckHr(app->GetIDsOfNames(IID_NULL, names, 2, LOCALE_USER_DEFAULT, ids),
                   DISP_E_UNKNOWNNAME, "named arguments are unknown");
  LPOLESTR unknown[1] = {const_cast<LPOLESTR>(L"NoSuchMember")};
  TestLog::CheckHr(app->GetIDsOfNames(IID_NULL, unknown, 1, LOCALE_USER_DEFAULT, ids),
                   DISP_E_UNKNOWNNAME, "an unknown name");
  TestLog::Check(ids[0] == DISPID_UNKNOWN, "an unknown name gets DISPID_UNKNOWN");

  // GetNamespace with the text passed by reference, as a typed client might.
  BSTR mapi = ::SysAllocString(L"MAPI");
  Var byRef;
  V_VT(byRef.get()) = VT_BYREF | VT_BSTR;
  V_BSTRREF(byRef.get()) = &mapi;
  Result ns = Call(app, L"GetNamespace", {byRef});
  TestLog::Check(ns.Ok() && ns.value.Type() == VT_DISPATCH, "GetNamespace(VT_BYREF|VT_BSTR)",
                 TestLog::Hex(ns.hr));
  ::SysFreeString(mapi);
  Result again = Call(app, L"GetNamespace", {Var::Str(L"mapi")});
  TestLog::Check(again.Ok() && again.value.Object() == ns.value.Object(),
                 "GetNamespace hands out the same NameSpace");
  Result other = Call(app, L"GetNamespace", {Var::Str(L"EXCHANGE")});
  TestLog::Check(other.hr == DISP_E_EXCEPTION && !other.description.empty(),
                 "GetNamespace of another type fails with a description", TestLog::Hex(other.hr));
  TestLog::CheckHr(Call(app, L"GetNamespace").hr, DISP_E_BADPARAMCOUNT,
                   "GetNamespace without its argument");

  IDispatch* nameSpace = ObjectOf(ns);
  IDispatch* cats = nameSpace != nullptr ? ObjectOf(Call(nameSpace, L"Categories")) : nullptr;
  if (TestLog::Check(cats != nullptr, "NameSpace.Categories")) {
    Call(app, L"Reset");
    Result added = Call(cats, L"Add", {Var::Str(L"Probe"), Var::Missing(), Var::I4(5)});
    IDispatch* cat = ObjectOf(added);
    TestLog::Check(cat != nullptr && Call(cat, L"Color").value.Long() == 0 &&
                       Call(cat, L"ShortcutKey").value.Long() == 5,
                   "Add with the colour left out (VT_ERROR/DISP_E_PARAMNOTFOUND)");
    Var number = Var::I4(1);
    Result byRefIndex = Call(cats, L"Item", {Var::Ref(number.get())});
    TestLog::Check(
        byRefIndex.Ok() && Call(byRefIndex.value.Object(), L"Name").value.Text() == L"Probe",
        "Item with a number passed by reference");
    Result dup = Call(cats, L"Add", {Var::Str(L"PROBE")});
    TestLog::Check(dup.hr == DISP_E_EXCEPTION && dup.source == L"Tandrel4Test.Outlook" &&
                       !dup.description.empty(),
                   "Add of an existing name: DISP_E_EXCEPTION with EXCEPINFO",
                   TestLog::Hex(dup.hr));
    TestLog::CheckHr(Put(cats, L"Count", Var::I4(3)).hr, DISP_E_MEMBERNOTFOUND,
                     "Count cannot be assigned");
    DISPID id = 0;
    LPOLESTR nameCount[1] = {const_cast<LPOLESTR>(L"Count")};
    cats->GetIDsOfNames(IID_NULL, nameCount, 1, LOCALE_USER_DEFAULT, &id);
    DISPPARAMS none = {nullptr, nullptr, 0, 0};
    VARIANT result;
    ::VariantInit(&result);
    TestLog::CheckHr(cats->Invoke(id, IID_IDispatch, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                                  &none, &result, nullptr, nullptr),
                     DISP_E_UNKNOWNINTERFACE, "Invoke with an IID other than IID_NULL");
    TestLog::CheckHr(cats->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                  &result, nullptr, nullptr),
                     S_OK, "Invoke with DISPATCH_PROPERTYGET alone");
    TestLog::Check(V_VT(&result) == VT_I4 && V_I4(&result) == 1, "Count is 1");
    ::VariantClear(&result);
    if (cat != nullptr) cat->Release();
    Call(app, L"Reset");
    cats->Release();
  }
  if (nameSpace != nullptr) nameSpace->Release();
}

// A one-dimensional SAFEARRAY of BSTRs with lower bound `lower`, in a Var.
Var BstrArray(std::initializer_list<const wchar_t*> texts, LONG lower) {
  SAFEARRAYBOUND bound = {static_cast<ULONG>(texts.size()), lower};
  SAFEARRAY* array = ::SafeArrayCreate(VT_BSTR, 1, &bound);
  LONG i = lower;
  for (const wchar_t* text : texts) {
    BSTR copy = ::SysAllocString(text);
    ::SafeArrayPutElement(array, &i, copy);
    ::SysFreeString(copy);
    ++i;
  }
  Var v;
  V_VT(v.get()) = VT_ARRAY | VT_BSTR;
  V_ARRAY(v.get()) = array;
  return v;
}

// Rule categories from a typed client: arrays of BSTR, other lower bounds.
void CheckRuleArrays(IDispatch* app) {
  Call(app, L"Reset");
  IDispatch* ns = ObjectOf(Call(app, L"GetNamespace", {Var::Str(L"MAPI")}));
  IDispatch* store = ns != nullptr ? ObjectOf(Call(ns, L"DefaultStore")) : nullptr;
  IDispatch* rules = store != nullptr ? ObjectOf(Call(store, L"GetRules")) : nullptr;
  if (!TestLog::Check(rules != nullptr, "Store.GetRules")) {
    if (store != nullptr) store->Release();
    if (ns != nullptr) ns->Release();
    return;
  }
  IDispatch* rule =
      ObjectOf(Call(rules, L"AddTestRule", {Var::Str(L"R"), Var::Str(L"a"), Var::Str(L"")}));
  IDispatch* conditions = rule != nullptr ? ObjectOf(Call(rule, L"Conditions")) : nullptr;
  IDispatch* part = conditions != nullptr ? ObjectOf(Call(conditions, L"Category")) : nullptr;
  if (TestLog::Check(part != nullptr, "Rule.Conditions.Category")) {
    TestLog::CheckHr(Put(part, L"Categories", BstrArray({L"x", L"y"}, 0)).hr, S_OK,
                     "Categories takes a SAFEARRAY of BSTR");
    TestLog::Check(Call(rules, L"RuleText", {Var::I4(1)}).value.Text() == L"x;y|",
                   "and stores its texts");
    TestLog::CheckHr(Put(part, L"Categories", BstrArray({L"p", L"q", L"r"}, 5)).hr, S_OK,
                     "Categories takes an array with lower bound 5");
    TestLog::Check(Call(rules, L"RuleText", {Var::I4(1)}).value.Text() == L"p;q;r|",
                   "and reads it from its lower bound");
    Result got = Call(part, L"Categories");
    LONG lower = -1, upper = -1;
    if (got.value.Type() == (VT_ARRAY | VT_VARIANT)) {
      ::SafeArrayGetLBound(V_ARRAY(got.value.get()), 1, &lower);
      ::SafeArrayGetUBound(V_ARRAY(got.value.get()), 1, &upper);
    }
    TestLog::Check(got.value.Type() == (VT_ARRAY | VT_VARIANT) && lower == 0 && upper == 2,
                   "Categories reads as VT_ARRAY|VT_VARIANT from 0",
                   "type " + std::to_string(got.value.Type()));
    SAFEARRAYBOUND bounds[2] = {{1, 0}, {1, 0}};
    Var twoDims;
    V_VT(twoDims.get()) = VT_ARRAY | VT_VARIANT;
    V_ARRAY(twoDims.get()) = ::SafeArrayCreate(VT_VARIANT, 2, bounds);
    TestLog::CheckHr(Put(part, L"Categories", twoDims).hr, DISP_E_TYPEMISMATCH,
                     "a two-dimensional array is refused");
    TestLog::CheckHr(Put(part, L"Categories", Var::Str(L"p;q")).hr, DISP_E_TYPEMISMATCH,
                     "a plain text is refused");
    TestLog::Check(Call(rules, L"RuleText", {Var::I4(1)}).value.Text() == L"p;q;r|",
                   "a refused value changes nothing");
  }
  for (IDispatch* object : {part, conditions, rule, rules, store, ns}) {
    if (object != nullptr) object->Release();
  }
  Call(app, L"Reset");
}

}  // namespace

int wmain() {
  if (FAILED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {
    TestLog::Fail("CoInitializeEx", "failed");
    return TestLog::Summary();
  }
  CheckProgIds();
  IDispatch* app = Create(L"Tandrel4Test.Outlook");
  if (TestLog::Check(app != nullptr, "create Tandrel4Test.Outlook")) {
    CheckConnectionPoints(app);
    CheckDispatch(app);
    CheckRuleArrays(app);
  }
  CheckNoEvents();

  // The DLL is loaded by now; it may unload only once nothing of it is held.
  HMODULE module = ::GetModuleHandleW(L"T4OutlookStandIn.dll");
  using CanUnload = HRESULT(STDAPICALLTYPE*)();
  auto canUnload = module != nullptr ? reinterpret_cast<CanUnload>(reinterpret_cast<void*>(
                                           ::GetProcAddress(module, "DllCanUnloadNow")))
                                     : nullptr;
  if (TestLog::Check(canUnload != nullptr, "DllCanUnloadNow is exported")) {
    TestLog::CheckHr(canUnload(), S_FALSE, "DllCanUnloadNow while the Application lives");
  }
  if (app != nullptr) app->Release();
  if (canUnload != nullptr) {
    TestLog::CheckHr(canUnload(), S_OK, "DllCanUnloadNow once everything is released");
  }
  ::CoUninitialize();
  return TestLog::Summary();
}
