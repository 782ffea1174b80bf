// Checks of the COM layer from the inside: the program links tandrel4_com
// statically and carries the DLL's resources (type library, message table),
// so it can call the error boundary, the VARIANT helpers and the identity
// map directly, and it can put the model into states a script cannot reach
// (items exist only after reading Outlook) and then drive the wrappers
// through IDispatch exactly as a host does (ModelTests.cpp).

#include <windows.h>

#include <cstdio>
#include <iterator>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "Automation.h"
#include "DispatchProbe.h"
#include "FolderListTests.h"
#include "MapiStandInTests.h"
#include "ModelSetup.h"
#include "ModelTests.h"
#include "ObjectModel.h"
#include "ProbeObject.h"
#include "TestLog.h"
#include "com/ApplicationObject.h"
#include "com/CategoriesObject.h"
#include "com/CategoryObject.h"
#include "com/CategoryRulesObjectWrapper.h"
#include "com/ComModule.h"
#include "com/ConnectionPoint.h"
#include "com/ErrorBoundary.h"
#include "com/FolderDataObject.h"
#include "com/IdentityMap.h"
#include "com/MasterlistObjectWrapper.h"
#include "com/OutlookItemObject.h"
#include "com/OutlookItemsObject.h"
#include "com/RulesReaderObject.h"
#include "com/Variants.h"
#include "com/Wrap.h"
#include "platform/common/DefaultPorts.h"
#include "platform/win32/VariantCoercion.h"
#include "support/Error.h"
#include "support/ErrorFrame.h"
#include "support/RunTimeError.h"

using t4test::ErrorInfoFields;
using t4test::TakeBstr;
using t4test::TakeErrorInfo;
using t4test::TestLog;

namespace {

std::wstring W(const char16_t* text) {
  return reinterpret_cast<const wchar_t*>(text);
}

void TestErrorBoundary() {
  using t4::com::Boundary;
  const IID& iid = IID__Category;

  // A library error keeps its number as the HRESULT and its texts.
  const char16_t* description =
      u"Der Name existiert bereits.\r\n\r\nBitte w\u00e4hlen Sie einen anderen Namen.";
  HRESULT hr = Boundary(iid, [&] {
    throw t4::Error(static_cast<int32_t>(0xD080222Au), description,
                    u"Tandrel4; Tandrel4.Category.Name (0)");
  });
  TestLog::CheckHr(hr, static_cast<HRESULT>(0xD080222A), "library error keeps its number");
  ErrorInfoFields info = TakeErrorInfo();
  TestLog::Check(info.present, "library error sets IErrorInfo");
  TestLog::Check(info.source == L"Tandrel4; Tandrel4.Category.Name (0)",
                 "IErrorInfo source is the trail", TestLog::Utf8(info.source));
  TestLog::Check(info.description == W(description),
                 "IErrorInfo description with CR LF and umlaut intact",
                 TestLog::Utf8(info.description));
  TestLog::Check(IsEqualGUID(info.guid, iid), "IErrorInfo names the interface");

  // Help file and context pass through.
  hr = Boundary(iid, [] { throw t4::Error(1234, u"x", u"Tandrel4", u"Tandrel4.chm", 42); });
  info = TakeErrorInfo();
  TestLog::CheckHr(hr, static_cast<HRESULT>(0x800A04D2), "error 1234 becomes 0x800A04D2");
  TestLog::Check(info.helpFile == L"Tandrel4.chm" && info.helpContext == 42,
                 "help file and context pass through");

  // Visual Basic run-time errors.
  hr = Boundary(iid, [] { throw t4::RunTimeError::Make(t4::RunTimeError::kInvalidProcedureCall); });
  info = TakeErrorInfo();
  TestLog::CheckHr(hr, static_cast<HRESULT>(0x800A0005), "run-time error 5 becomes 0x800A0005");
  TestLog::Check(
      info.description == L"Invalid procedure call or argument" && info.source == L"Tandrel4",
      "run-time error text and source", TestLog::Utf8(info.description));
  hr = Boundary(iid, [] { throw t4::Error(0, u"zero"); });
  TestLog::CheckHr(hr, static_cast<HRESULT>(0x800A0000), "number 0 becomes 0x800A0000");
  hr = Boundary(iid, [] { throw t4::Error(65535, u"top"); });
  TestLog::CheckHr(hr, static_cast<HRESULT>(0x800AFFFF), "number 65535 becomes 0x800AFFFF");
  hr = Boundary(iid, [] { throw t4::Error(65536, u"above"); });
  TestLog::CheckHr(hr, E_UNEXPECTED, "positive number above 65535 becomes E_UNEXPECTED");
  TestLog::Check(TakeErrorInfo().description == L"above", "its description is kept");
  hr = Boundary(iid, [] { throw t4::RunTimeError::NotImplemented(u"Category.Name"); });
  TestLog::CheckHr(hr, E_NOTIMPL, "NotImplemented becomes E_NOTIMPL");
  TestLog::Check(TakeErrorInfo().description == L"Not implemented yet: Category.Name",
                 "NotImplemented description");

  // Errors that climbed through core frames arrive with the whole trail.
  hr = Boundary(iid, [] {
    t4::Frame(u"Categories", u"Add", [] {
      t4::Frame(u"Category", u"Name", [] {
        throw t4::Error(static_cast<int32_t>(0xD080222Au), u"Der Name existiert bereits.");
      });
    });
  });
  info = TakeErrorInfo();
  TestLog::CheckHr(hr, static_cast<HRESULT>(0xD080222A), "framed error keeps its number");
  TestLog::Check(
      info.source == L"Tandrel4; Tandrel4.Category.Name (0); Tandrel4.Categories.Add (0)",
      "framed error source trail", TestLog::Utf8(info.source));

  // Everything else.
  hr = Boundary(iid, [] { throw std::bad_alloc(); });
  info = TakeErrorInfo();
  TestLog::CheckHr(hr, E_OUTOFMEMORY, "bad_alloc becomes E_OUTOFMEMORY");
  TestLog::Check(info.present && info.description == L"Out of memory", "bad_alloc description");
  hr = Boundary(iid, [] { throw std::runtime_error("boom"); });
  info = TakeErrorInfo();
  TestLog::CheckHr(hr, E_UNEXPECTED, "std::exception becomes E_UNEXPECTED");
  TestLog::Check(info.description == L"Unexpected error: boom", "std::exception description",
                 TestLog::Utf8(info.description));
  hr = Boundary(iid, [] { throw 42; });
  info = TakeErrorInfo();
  TestLog::CheckHr(hr, E_UNEXPECTED, "a foreign exception becomes E_UNEXPECTED");
  TestLog::Check(info.description == L"Unexpected error", "foreign exception description");

  // Success paths.
  TestLog::CheckHr(Boundary(iid, [] {}), S_OK, "a body that returns nothing is S_OK");
  TestLog::CheckHr(Boundary(iid, [] { return S_FALSE; }), S_FALSE,
                   "a body's own HRESULT passes through");
  hr = Boundary(iid, [] { t4::com::ThrowIfFailed(E_ACCESSDENIED); });
  TestLog::CheckHr(hr, E_ACCESSDENIED, "a failed system HRESULT leaves unchanged");
}

void TestVariants() {
  using namespace t4::com;
  using t4::win32::VariantCoercion;
  VARIANT inner;
  ::VariantInit(&inner);
  V_VT(&inner) = VT_I4;
  V_I4(&inner) = 7;
  VARIANT middle;
  V_VT(&middle) = VT_BYREF | VT_VARIANT;
  V_VARIANTREF(&middle) = &inner;
  VARIANT outer;
  V_VT(&outer) = VT_BYREF | VT_VARIANT;
  V_VARIANTREF(&outer) = &middle;
  TestLog::Check(&VariantCoercion::Deref(outer) == &inner,
                 "Deref follows nested VT_BYREF|VT_VARIANT");
  TestLog::Check(VariantCoercion::Long(outer) == 7, "LongOf reads through references");

  // Writing back into a script variable (VT_BYREF|VT_VARIANT).
  AssignByRef(&outer, int32_t{42});
  TestLog::Check(V_VT(&inner) == VT_I4 && V_I4(&inner) == 42,
                 "AssignByRef into a VARIANT variable");
  AssignByRef(&outer, true);
  TestLog::Check(V_VT(&inner) == VT_BOOL && V_BOOL(&inner) == VARIANT_TRUE,
                 "AssignByRef changes the variable's type");
  // Into a typed variable (ByRef x As Long).
  LONG typed = 0;
  VARIANT typedRef;
  V_VT(&typedRef) = VT_BYREF | VT_I4;
  V_I4REF(&typedRef) = &typed;
  AssignByRef(&typedRef, int32_t{5});
  TestLog::Check(typed == 5, "AssignByRef through VT_BYREF|VT_I4");
  BSTR text = ::SysAllocString(L"old");
  VARIANT textRef;
  V_VT(&textRef) = VT_BYREF | VT_BSTR;
  V_BSTRREF(&textRef) = &text;
  AssignByRef(&textRef, int32_t{12});
  TestLog::Check(text != nullptr && std::wstring(text) == L"12",
                 "AssignByRef converts to a typed BSTR variable");
  ::SysFreeString(text);
  bool threw = false;
  try {
    VARIANT word;
    V_VT(&word) = VT_BSTR;
    V_BSTR(&word) = ::SysAllocString(L"abc");
    try {
      AssignByRef(&typedRef, word);
    } catch (...) {
      ::VariantClear(&word);
      throw;
    }
    ::VariantClear(&word);
  } catch (const t4::Error& error) {
    threw = error.Number() == 13;
  }
  TestLog::Check(threw, "a text that is no number raises type mismatch (13)");
  // A plain VARIANT (a C++ caller's variable).
  VARIANT plain;
  ::VariantInit(&plain);
  AssignByRef(&plain, int32_t{3});
  TestLog::Check(V_VT(&plain) == VT_I4 && V_I4(&plain) == 3, "AssignByRef into a plain VARIANT");
  AssignByRef(nullptr, int32_t{3});
  TestLog::Pass("AssignByRef ignores a missing optional argument");

  VARIANT missing;
  V_VT(&missing) = VT_ERROR;
  V_ERROR(&missing) = DISP_E_PARAMNOTFOUND;
  TestLog::Check(
      IsMissing(missing) && OptionalBool(missing, true) && OptionalLong(missing, -2) == -2,
      "a missing optional argument takes the fallback");
  VARIANT number;
  V_VT(&number) = VT_BSTR;
  V_BSTR(&number) = ::SysAllocString(L"12");
  TestLog::Check(!IsMissing(number) && VariantCoercion::Long(number) == 12 &&
                     VariantCoercion::Text(number) == u"12",
                 "text converts to a number");
  ::VariantClear(&number);
  V_VT(&number) = VT_R8;
  V_R8(&number) = 1e20;
  threw = false;
  try {
    VariantCoercion::Long(number);
  } catch (const t4::Error& error) {
    threw = error.Number() == 6;
  }
  TestLog::Check(threw, "a number out of range raises overflow (6)");
  V_VT(&number) = VT_BOOL;
  V_BOOL(&number) = VARIANT_TRUE;
  TestLog::Check(VariantCoercion::Bool(number) && VariantCoercion::Long(number) == -1,
                 "True is -1 as a number");
}

using Probe = t4::test::ProbeObject<>;

void TestIdentityMap() {
  using t4::com::IdentityMap;
  const std::size_t before = IdentityMap::Count();
  int coreA = 0;
  int coreB = 0;
  auto make = [](const void* core) {
    return [core]() -> IUnknown* {
      auto* probe = new Probe();
      probe->BindIdentity(core);
      return probe->Identity();
    };
  };
  IUnknown* first = IdentityMap::FindOrCreate(&coreA, make(&coreA));
  IUnknown* again = IdentityMap::FindOrCreate(&coreA, make(&coreA));
  IUnknown* other = IdentityMap::FindOrCreate(&coreB, make(&coreB));
  TestLog::Check(first != nullptr && first == again, "one core object, one wrapper");
  TestLog::Check(other != nullptr && other != first, "another core object, another wrapper");
  TestLog::Check(IdentityMap::Count() == before + 2, "two entries while held");
  TestLog::Check(again->Release() == 1, "the second handout counted a reference");
  TestLog::Check(first->Release() == 0, "the wrapper dies with its last reference");
  TestLog::Check(IdentityMap::Find(&coreA) == nullptr, "a dead wrapper is not handed out");
  IUnknown* fresh = IdentityMap::FindOrCreate(&coreA, make(&coreA));
  TestLog::Check(fresh != nullptr && IdentityMap::Count() == before + 2,
                 "a new wrapper after the old one died");
  fresh->Release();
  other->Release();
  TestLog::Check(IdentityMap::Count() == before, "entries go away with their wrappers");
}

// An event sink that records what it hears and answers the Progress event's
// by-reference bCancel with True.
class RecordingSink final : public t4test::StackDispatch {
 public:
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*,
                                   EXCEPINFO*, UINT*) override {
    ++calls;
    lastId = id;
    lastArgs = params->cArgs;
    if (params->cArgs == 3) t4::com::AssignByRef(&params->rgvarg[0], true);
    if (unadviseDuring != nullptr) unadviseDuring->Unadvise(cookie);
    return failing ? E_FAIL : S_OK;
  }
  int calls = 0;
  DISPID lastId = 0;
  UINT lastArgs = 0;
  bool failing = false;
  IConnectionPoint* unadviseDuring = nullptr;
  DWORD cookie = 0;
};

void TestEventRaise() {
  IConnectionPointContainer* container = nullptr;
  if (FAILED(t4::com::ApplicationObject::Create(IID_IConnectionPointContainer,
                                                reinterpret_cast<void**>(&container)))) {
    TestLog::Fail("event raise", "Application not created");
    return;
  }
  {
    t4::com::ConnectionPoint point(container, DIID___Application);
    RecordingSink first;
    RecordingSink second;
    point.Advise(&first, &first.cookie);
    point.Advise(&second, &second.cookie);
    // Progress(lValue, lMax, bCancel): arguments last first.
    VARIANT_BOOL cancel = VARIANT_FALSE;
    VARIANT args[3];
    V_VT(&args[0]) = VT_BYREF | VT_BOOL;
    V_BOOLREF(&args[0]) = &cancel;
    V_VT(&args[1]) = VT_I4;
    V_I4(&args[1]) = 10;
    V_VT(&args[2]) = VT_I4;
    V_I4(&args[2]) = 3;
    DISPPARAMS params = {args, nullptr, 3, 0};
    first.failing = true;
    first.unadviseDuring = &point;
    point.Raise(1, &params);
    TestLog::Check(
        first.calls == 1 && second.calls == 1 && second.lastId == 1 && second.lastArgs == 3,
        "an event reaches every sink with its arguments");
    TestLog::Check(cancel == VARIANT_TRUE, "a sink answers through the by-reference argument");
    TestLog::Check(point.SinkCount() == 1 && first.refs == 1,
                   "a sink may unadvise itself while the event runs");
    point.Raise(1, &params);
    TestLog::Check(first.calls == 1 && second.calls == 2,
                   "a failing or unadvised sink does not stop the others");
    point.Unadvise(second.cookie);
    TestLog::Check(second.refs == 1, "unadvised sinks are released");
  }
  TestLog::Check(container->Release() == 0, "event test object released to 0");
}

// Cores for the rules component's two objects that answer without Outlook.
class QuietMasterlist final : public t4::IRulesCategoryList {
 public:
  std::u16string ReadCategories() override { return u""; }
  void WriteCategories(std::u16string&) override {}
  std::u16string Format() override { return u""; }
};

class QuietRules final : public t4::ICategoryRules {
 public:
  bool Changed() override { return false; }
  void Save() override {}
  void RenameCategory(std::u16string&, std::u16string&) override {}
};

// Every member of every interface, called through IDispatch as a script
// calls it, on objects wired to a core: the members whose behaviour comes
// with later work answer E_NOTIMPL with "Not implemented yet:
// <Class>.<Member>", every other member answers something else.
void TestPendingMembers() {
  ITypeLib* lib = nullptr;
  if (!TestLog::CheckHr(t4::com::ComModule::TypeLib(&lib), S_OK,
                        "the embedded type library loads")) {
    return;
  }
  const std::vector<std::wstring> pendingMembers = {};

  IDispatch* app = t4test::NewApplication();
  if (app == nullptr) {
    TestLog::Fail("pending members", "Application not created");
    lib->Release();
    return;
  }
  auto core = t4test::CoreOf(app);
  t4test::ReadList(*core, {u"Business"});
  auto item = t4test::ReadItem(*core, {u"Business"});
  IDispatch* folder = nullptr;
  t4::com::FolderDataObject::Create(IID_IDispatch, reinterpret_cast<void**>(&folder));
  IDispatch* reader = nullptr;
  t4::com::RulesReaderObject::Create(IID_IDispatch, reinterpret_cast<void**>(&reader));
  // Terminate is among the members called: the other objects are made first.
  IDispatch* objects[] = {
      app,
      folder,
      t4::com::Wrap(core->Categories()),
      t4::com::Wrap(core->Categories()->Item(t4::ItemIndex::Key(1), true)),
      t4::com::Wrap(core->OutlookItems()),
      t4::com::Wrap(item),
      reader,
      t4::com::MasterlistObjectWrapper::Make(std::make_shared<QuietMasterlist>()),
      t4::com::CategoryRulesObjectWrapper::Make(std::make_shared<QuietRules>())};
  const struct {
    const char* className;
    const IID* itf;
  } classes[] = {
      {"Application", &IID__Application},
      {"FolderData", &IID__FolderData},
      {"Categories", &IID__Categories},
      {"Category", &IID__Category},
      {"OutlookItems", &IID__OutlookItems},
      {"OutlookItem", &IID__OutlookItem},
      {"CategoryRules", &IID__CategoryRulesReader},
      {"MasterlistObject", &IID__MasterlistObject},
      {"CategoryRulesObject", &IID__CategoryRulesObject},
  };
  constexpr size_t kClassCount = std::size(classes);
  static_assert(sizeof(objects) / sizeof(objects[0]) == kClassCount);
  int pending = 0;
  int working = 0;
  for (size_t c = 0; c < kClassCount; ++c) {
    const std::string className = classes[c].className;
    if (objects[c] == nullptr) {
      TestLog::Fail(className, "no object for the test");
      continue;
    }
    // The class's own interface, and _IChild for the model classes.
    std::vector<std::pair<const IID*, std::wstring>> itfs = {{classes[c].itf, L""}};
    if (className == "Categories" || className == "Category" || className == "OutlookItems" ||
        className == "OutlookItem") {
      itfs.push_back({&IID__IChild, L"IChild_"});
    }
    for (const auto& itf : itfs) {
      IDispatch* dispatch = nullptr;
      if (FAILED(objects[c]->QueryInterface(*itf.first, reinterpret_cast<void**>(&dispatch)))) {
        TestLog::Fail(className, "does not answer its interface");
        continue;
      }
      ITypeInfo* info = nullptr;
      if (FAILED(t4test::VtableTypeInfo(lib, *itf.first, &info))) {
        TestLog::Fail(className, "its interface is not in the embedded type library");
        dispatch->Release();
        continue;
      }
      TYPEATTR* attr = nullptr;
      info->GetTypeAttr(&attr);
      for (UINT i = 0; i < attr->cFuncs; ++i) {
        FUNCDESC* func = nullptr;
        info->GetFuncDesc(i, &func);
        const std::wstring name = t4test::MemberName(info, func->memid);
        const std::wstring member =
            std::wstring(className.begin(), className.end()) + L"." + itf.second + name;
        const char* kind = func->invkind == INVOKE_PROPERTYPUT   ? " (put)"
                           : func->invkind == INVOKE_PROPERTYGET ? " (get)"
                                                                 : "";
        bool isPending = false;
        for (const std::wstring& p : pendingMembers) isPending |= p == member;
        const t4test::ProbeResult probe = t4test::InvokeWithDefaults(dispatch, *func);
        const std::string detail = TestLog::Hex(probe.hr) + " " + TestLog::Hex(probe.scode) +
                                   " \"" + TestLog::Utf8(probe.description) + "\"";
        if (isPending) {
          TestLog::Check(probe.hr == DISP_E_EXCEPTION && probe.scode == E_NOTIMPL &&
                             probe.description == L"Not implemented yet: " + member,
                         "pending " + TestLog::Utf8(member) + kind, detail);
          ++pending;
        } else {
          TestLog::Check(probe.hr != E_NOTIMPL && probe.scode != E_NOTIMPL,
                         "working " + TestLog::Utf8(member) + kind, detail);
          ++working;
        }
        info->ReleaseFuncDesc(func);
      }
      info->ReleaseTypeAttr(attr);
      info->Release();
      dispatch->Release();
    }
  }
  std::printf("INFO %d pending and %d working member slots checked\n", pending, working);
  for (size_t c = 0; c < kClassCount; ++c) {
    if (objects[c] != nullptr) {
      TestLog::Check(objects[c]->Release() == 0,
                     std::string(classes[c].className) + " test object released to 0");
    }
  }
  lib->Release();
}

}  // namespace

int wmain() {
  t4::platform::UseDefaultPorts();
  if (!TestLog::CheckHr(::CoInitialize(nullptr), S_OK, "CoInitialize")) return TestLog::Summary();
  TestErrorBoundary();
  TestVariants();
  TestIdentityMap();
  TestEventRaise();
  TestPendingMembers();
  t4test::TestHostFolderLists();
  t4test::TestMapiAdaptersOverTheStandIn();
  t4test::TestIndexConversion();
  t4test::TestItemsThroughDispatch();
  t4test::TestItemsFromVBScript();
  TestLog::Check(t4::com::ComModule::CanUnload(), "no object and no lock left alive",
                 std::to_string(t4::com::ComModule::ObjectCount()) + " objects");
  t4::com::ComModule::ReleaseTypeInfos();
  ::CoUninitialize();
  return TestLog::Summary();
}
