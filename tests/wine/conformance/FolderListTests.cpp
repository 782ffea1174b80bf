#include "FolderListTests.h"

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "Automation.h"
#include "ScriptHost.h"
#include "TestLog.h"
#include "com/FolderDataObject.h"
#include "com/HostFolderList.h"
#include "support/Error.h"

namespace t4test {

namespace {

using t4::com::HostFolderList;

IDispatch* NewFolderData(const wchar_t* name) {
  IDispatch* folder = nullptr;
  t4::com::FolderDataObject::Create(IID_IDispatch, reinterpret_cast<void**>(&folder));
  if (folder == nullptr) return nullptr;
  auto* object = static_cast<t4::com::FolderDataObject*>(
      static_cast<t4::com::DispatchImpl<_FolderData>*>(static_cast<_FolderData*>(folder)));
  const std::u16string text(reinterpret_cast<const char16_t*>(name));
  object->Core()->Init(u"E" + text, u"S", text, 1, false);
  return folder;
}

// The error number a call raises, 0 when it raises nothing.
template <class Body>
int32_t NumberOf(Body body) {
  try {
    body();
  } catch (const t4::Error& e) {
    return e.Number();
  }
  return 0;
}

std::string NameOf(const std::shared_ptr<t4::FolderData>& folder) {
  if (!folder) return "<none>";
  return TestLog::Utf8(std::wstring(folder->Name().begin(), folder->Name().end()));
}

// A VARIANT array with lower bound `lower` taking over `values`.
SAFEARRAY* ArrayOf(std::vector<VARIANT> values, LONG lower) {
  SAFEARRAYBOUND bound = {static_cast<ULONG>(values.size()), lower};
  SAFEARRAY* array = ::SafeArrayCreate(VT_VARIANT, 1, &bound);
  for (size_t i = 0; i < values.size(); ++i) {
    LONG index = lower + static_cast<LONG>(i);
    ::SafeArrayPutElement(array, &index, &values[i]);
    ::VariantClear(&values[i]);
  }
  return array;
}

VARIANT ObjectValue(IDispatch* object) {
  VARIANT v;
  V_VT(&v) = VT_DISPATCH;
  V_DISPATCH(&v) = object;  // taken over
  return v;
}

// A named item for hosted VBScript: Take(list) reads the list it is given
// as ReadItems would and keeps what it found ("Inbox,<none>,13").
class ListProbe final : public StackDispatch {
 public:
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                          DISPID* ids) override {
    ids[0] = ::lstrcmpiW(names[0], L"Found") == 0 ? 2 : 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params,
                                   VARIANT* result, EXCEPINFO*, UINT*) override {
    if (id == 2) {
      if (result != nullptr) {
        const std::wstring text(found.begin(), found.end());
        V_VT(result) = VT_BSTR;
        V_BSTR(result) = ::SysAllocString(text.c_str());
      }
      return S_OK;
    }
    found.clear();
    if (params->cArgs != 1) return DISP_E_BADPARAMCOUNT;
    try {
      std::shared_ptr<t4::IFolderList> list = HostFolderList::From(params->rgvarg[0]);
      const int32_t count = list ? list->Count() : -1;
      found = std::to_string(count);
      for (int32_t i = 1; i <= count; ++i) {
        std::string entry;
        const int32_t number = NumberOf([&] { entry = NameOf(list->Item(i)); });
        found += "," + (number != 0 ? std::to_string(number) : entry);
      }
    } catch (const t4::Error& e) {
      found = "error " + std::to_string(e.Number());
    }
    return S_OK;
  }
  std::string found;
};

// What the probe finds in the lists a VBScript builds: a class with Count
// and a default Item (as VB's Collection), arrays and a dictionary.
void TestFolderListsFromVBScript() {
  IDispatch* inbox = NewFolderData(L"Inbox");
  ListProbe probe;
  const std::wstring code =
      LR"(
Class FolderBag
  Private items_
  Private Sub Class_Initialize()
    Set items_ = CreateObject("Scripting.Dictionary")
  End Sub
  Public Property Get Count()
    Count = items_.Count
  End Property
  Public Default Function Item(index)
    If IsObject(items_(index - 1)) Then
      Set Item = items_(index - 1)
    Else
      Item = items_(index - 1)
    End If
  End Function
  Public Sub Add(entry)
    items_.Add items_.Count, entry
  End Sub
End Class
Dim bag, list(2), d
Set bag = New FolderBag
bag.Add inbox
bag.Add Empty
bag.Add "text"
probe.Take bag
T.Check probe.Found = "3,Inbox,<none>,13", "folder list from VBScript: a collection", probe.Found
Set list(0) = inbox
list(2) = 5
probe.Take list
T.Check probe.Found = "3,Inbox,<none>,13", "folder list from VBScript: an array", probe.Found
Set d = CreateObject("Scripting.Dictionary")
d.Add "x", inbox
probe.Take d
T.Check probe.Found = "1,Inbox", "folder list from VBScript: a dictionary", probe.Found
probe.Take Nothing
T.Check probe.Found = "-1", "folder list from VBScript: Nothing", probe.Found
)";
  std::wstring error;
  const bool ran = RunVBScript(code, {{L"probe", &probe}, {L"inbox", inbox}}, error);
  TestLog::Check(ran, "folder list from VBScript: the script runs through", TestLog::Utf8(error));

  // JScript arrays: `length` and the members "0", "1", ...; a hole is empty.
  const std::wstring js =
      LR"(
probe.Take([inbox, null, "text"]);
T.Check(probe.Found == "3,Inbox,<none>,13", "folder list from JScript: an array", probe.Found);
var holes = [];
holes[1] = inbox;
probe.Take(holes);
T.Check(probe.Found == "2,<none>,Inbox", "folder list from JScript: a hole", probe.Found);
probe.Take([]);
T.Check(probe.Found == "0", "folder list from JScript: an empty array", probe.Found);
probe.Take(null);
T.Check(probe.Found == "-1", "folder list from JScript: null", probe.Found);
)";
  const bool ranJs = RunJScript(js, {{L"probe", &probe}, {L"inbox", inbox}}, error);
  TestLog::Check(ranJs, "folder list from JScript: the script runs through", TestLog::Utf8(error));
  inbox->Release();
}

}  // namespace

void TestHostFolderLists() {
  // Nothing to read: Empty, Null, Nothing, a left-out argument.
  VARIANT none;
  ::VariantInit(&none);
  TestLog::Check(HostFolderList::From(none) == nullptr, "folder list: Empty is no list");
  V_VT(&none) = VT_NULL;
  TestLog::Check(HostFolderList::From(none) == nullptr, "folder list: Null is no list");
  V_VT(&none) = VT_DISPATCH;
  V_DISPATCH(&none) = nullptr;
  TestLog::Check(HostFolderList::From(none) == nullptr, "folder list: Nothing is no list");
  V_VT(&none) = VT_I4;
  V_I4(&none) = 5;
  TestLog::Check(NumberOf([&] { HostFolderList::From(none); }) == 13,
                 "folder list: a number raises 13");

  // A VBScript array passed by reference (a script variable), lower bound
  // 3: a FolderData, an empty entry, a second FolderData, an object that is
  // no FolderData and a text.
  IDispatch* other = nullptr;
  {
    IDispatch* app = nullptr;
    CLSID clsid;
    if (SUCCEEDED(::CLSIDFromProgID(L"Scripting.Dictionary", &clsid))) {
      ::CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                         reinterpret_cast<void**>(&app));
    }
    other = app;
  }
  std::vector<VARIANT> values(5);
  values[0] = ObjectValue(NewFolderData(L"Inbox"));
  ::VariantInit(&values[1]);
  values[2] = ObjectValue(NewFolderData(L"Sent"));
  if (other != nullptr) other->AddRef();
  values[3] = ObjectValue(other);
  V_VT(&values[4]) = VT_BSTR;
  V_BSTR(&values[4]) = ::SysAllocString(L"Inbox");
  VARIANT array;
  V_VT(&array) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(&array) = ArrayOf(std::move(values), 3);
  VARIANT byRef;
  V_VT(&byRef) = VT_BYREF | VT_VARIANT;
  V_VARIANTREF(&byRef) = &array;
  std::shared_ptr<t4::IFolderList> list = HostFolderList::From(byRef);
  ::VariantClear(&array);  // the list keeps its own copy
  if (TestLog::Check(list != nullptr && list->Count() == 5, "folder list: a by-reference array")) {
    TestLog::Check(NameOf(list->Item(1)) == "Inbox", "folder list: entry 1 is the first element",
                   NameOf(list->Item(1)));
    TestLog::Check(list->Item(2) == nullptr, "folder list: an Empty element is an empty entry");
    TestLog::Check(NameOf(list->Item(3)) == "Sent", "folder list: entry 3");
    TestLog::Check(NumberOf([&] { list->Item(4); }) == 13,
                   "folder list: an object that is no FolderData raises 13");
    TestLog::Check(NumberOf([&] { list->Item(5); }) == 13, "folder list: a text element raises 13");
    TestLog::Check(list->Item(6) == nullptr && list->Item(0) == nullptr,
                   "folder list: positions outside the array are empty");
  }
  list.reset();

  // An empty array is an empty list.
  VARIANT empty;
  V_VT(&empty) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(&empty) = ArrayOf({}, 0);
  list = HostFolderList::From(empty);
  TestLog::Check(list != nullptr && list->Count() == 0, "folder list: an empty array");
  ::VariantClear(&empty);

  // A Scripting.Dictionary: its Items, whatever the keys.
  if (other == nullptr) {
    TestLog::Fail("folder list: a dictionary", "Scripting.Dictionary not created");
    return;
  }
  const auto add = [&](const wchar_t* key, VARIANT item) {
    DISPID id = 0;
    LPOLESTR name = const_cast<LPOLESTR>(L"Add");
    other->GetIDsOfNames(IID_NULL, &name, 1, 0, &id);
    VARIANT args[2];
    args[0] = item;
    V_VT(&args[1]) = VT_BSTR;
    V_BSTR(&args[1]) = ::SysAllocString(key);
    DISPPARAMS params = {args, nullptr, 2, 0};
    other->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &params, nullptr, nullptr, nullptr);
    ::VariantClear(&args[0]);
    ::VariantClear(&args[1]);
  };
  add(L"b", ObjectValue(NewFolderData(L"Drafts")));
  add(L"a", ObjectValue(NewFolderData(L"Outbox")));
  VARIANT dictionary;
  V_VT(&dictionary) = VT_DISPATCH;
  V_DISPATCH(&dictionary) = other;
  list = HostFolderList::From(dictionary);
  if (TestLog::Check(list != nullptr && list->Count() == 2, "folder list: a dictionary")) {
    TestLog::Check(NameOf(list->Item(1)) == "Drafts" && NameOf(list->Item(2)) == "Outbox",
                   "folder list: a dictionary's items in the order they were added",
                   NameOf(list->Item(1)) + " " + NameOf(list->Item(2)));
  }
  list.reset();
  TestLog::Check(other->Release() == 0, "folder list: the host's objects are let go");
  TestFolderListsFromVBScript();
}

}  // namespace t4test
