// The Categories class of the registered DLL through its vtable and its
// connection point.

#include "CategoriesTests.h"

#include <ocidl.h>
#include <olectl.h>
#include <windows.h>

#include <string>
#include <vector>

#include "Automation.h"
#include "ConformanceSupport.h"
#include "EventRecorder.h"
#include "TestLog.h"
#include "com/Tandrel4_h.h"

namespace t4test {

namespace {

std::wstring Joined(const std::vector<std::wstring>& events) {
  std::wstring out;
  for (const auto& e : events) out += (out.empty() ? L"" : L" | ") + e;
  return out;
}

void CheckEvents(t4test::EventRecorder& sink, const std::vector<std::wstring>& expected,
                 const std::string& name) {
  TestLog::Check(sink.events == expected, name, TestLog::Utf8(Joined(sink.events)));
  sink.events.clear();
}

}  // namespace

void TestImportEvents() {
  _Application* app = NewApplicationOrFail("import events");
  if (app == nullptr) return;
  _Categories* cats = nullptr;
  app->get_Categories(&cats);
  IConnectionPointContainer* container = nullptr;
  IConnectionPoint* point = nullptr;
  if (cats != nullptr) {
    cats->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&container));
  }
  if (container != nullptr) container->FindConnectionPoint(DIID___Categories, &point);
  if (point == nullptr) {
    TestLog::Fail("import events", "no __Categories connection point");
    if (container != nullptr) container->Release();
    if (cats != nullptr) cats->Release();
    app->Release();
    return;
  }
  AddCategory(cats, L"", false)->Release();
  _Category* work = AddCategory(cats, L"Work");
  work->put_Color(1);
  work->put_ShortCut(2);
  // The file is written here, by the test: UTF-8 without a byte-order mark.
  const wchar_t* path = L"C:\\t4tests\\import-events.txt";
  HANDLE file = ::CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  const char text[] = "Work;1;3;New;7;4";
  DWORD written = 0;
  ::WriteFile(file, text, sizeof text - 1, &written, nullptr);
  ::CloseHandle(file);

  t4test::EventRecorder sink;
  DWORD cookie = 0;
  point->Advise(&sink, &cookie);
  BSTR name = ::SysAllocString(path);
  TestLog::CheckHr(cats->ImportMasterlist(name), S_OK, "ImportMasterlist of a txt file");
  ::SysFreeString(name);
  CheckEvents(sink, {L"ItemChange Work", L"ItemAdd New"},
              "an import raises ItemChange for a changed and ItemAdd for a new category");
  VARIANT_BOOL batch = VARIANT_TRUE;
  app->get_BatchMode(&batch);
  TestLog::Check(batch == VARIANT_FALSE, "batch mode is off after the import");
  app->Undo();
  long shortCut = 0;
  work->get_ShortCut(&shortCut);
  VARIANT_BOOL exists = VARIANT_TRUE;
  BSTR newName = ::SysAllocString(L"New");
  VARIANT found;
  ::VariantInit(&found);
  cats->NameExist(newName, &found, &exists);
  ::VariantClear(&found);
  ::SysFreeString(newName);
  TestLog::Check(shortCut == 2 && exists == VARIANT_FALSE, "one Undo takes the whole import back");
  sink.events.clear();
  point->Unadvise(cookie);
  work->Release();
  point->Release();
  container->Release();
  cats->Release();
  TestLog::Check(app->Release() == 0, "import events test object released to 0");
}

void TestCategoriesEvents() {
  _Application* app = NewApplicationOrFail("Categories events");
  if (app == nullptr) return;
  _Categories* cats = nullptr;
  _Categories* again = nullptr;
  app->get_Categories(&cats);
  app->get_Categories(&again);
  TestLog::Check(cats != nullptr && cats == again,
                 "Application.Categories is the same object while held");
  if (again != nullptr) again->Release();
  if (cats == nullptr) {
    app->Release();
    return;
  }
  IConnectionPointContainer* container = nullptr;
  IConnectionPoint* point = nullptr;
  TestLog::CheckHr(
      cats->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&container)),
      S_OK, "Categories is a connection point container");
  IProvideClassInfo2* classInfo = nullptr;
  GUID source = GUID_NULL;
  if (SUCCEEDED(
          cats->QueryInterface(IID_IProvideClassInfo2, reinterpret_cast<void**>(&classInfo)))) {
    classInfo->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &source);
    classInfo->Release();
  }
  TestLog::Check(IsEqualIID(source, DIID___Categories),
                 "Categories' default source is "
                 "__Categories");
  if (container == nullptr) {
    cats->Release();
    app->Release();
    return;
  }
  TestLog::CheckHr(container->FindConnectionPoint(DIID___Application, &point),
                   CONNECT_E_NOCONNECTION, "Categories has no __Application connection point");
  TestLog::CheckHr(container->FindConnectionPoint(DIID___Categories, &point), S_OK,
                   "FindConnectionPoint __Categories");
  if (point == nullptr) {
    container->Release();
    cats->Release();
    app->Release();
    return;
  }
  t4test::EventRecorder sink;
  DWORD cookie = 0;
  TestLog::CheckHr(point->Advise(&sink, &cookie), S_OK, "Advise a sink on __Categories");
  TestLog::Check(cookie != 0, "its cookie is not 0");

  // Add -> ItemAdd; the event hands out the very object Add returns.
  _Category* work = AddCategory(cats, L"Work");
  CheckEvents(sink, {L"ItemAdd Work"}, "Add raises ItemAdd");
  TestLog::Check(work != nullptr && sink.last == static_cast<IDispatch*>(work),
                 "the event's category is the object Add returned");
  AddCategory(cats, L"work")->Release();
  CheckEvents(sink, {}, "Add of an existing name raises nothing");
  if (work == nullptr) {
    point->Unadvise(cookie);
    point->Release();
    container->Release();
    cats->Release();
    app->Release();
    return;
  }
  work->put_Color(5);
  CheckEvents(sink, {L"ItemChange Work"}, "Color raises ItemChange");
  work->put_Color(5);
  CheckEvents(sink, {L"ItemChange Work"}, "setting the same Color raises ItemChange too");
  BSTR office = ::SysAllocString(L"Office");
  work->put_Name(office);
  ::SysFreeString(office);
  CheckEvents(sink, {L"ItemChange Office"}, "Name raises ItemChange");
  work->put_InMasterlist(VARIANT_TRUE);
  CheckEvents(sink, {}, "setting InMasterlist to its value raises nothing");
  work->put_InMasterlist(VARIANT_FALSE);
  CheckEvents(sink, {L"ItemChange Office"}, "InMasterlist raises ItemChange");
  app->Undo();
  CheckEvents(sink, {L"ItemChange Office"}, "Undo of a property raises ItemChange");
  LONG id = -1;
  work->get_ID(&id);
  VARIANT key;
  V_VT(&key) = VT_BSTR;
  V_BSTR(&key) = ::SysAllocString(std::to_wstring(id).c_str());
  TestLog::CheckHr(cats->Delete(key), S_OK, "Delete by key");
  CheckEvents(sink, {L"ItemRemove " + std::to_wstring(id)},
              "Delete raises ItemRemove with the key");
  app->Undo();
  CheckEvents(sink, {}, "Undo of Delete puts the category back without ItemAdd");
  app->Redo();
  CheckEvents(sink, {L"ItemRemove " + std::to_wstring(id)}, "Redo of Delete raises ItemRemove");
  ::VariantClear(&key);

  // With FireItemEvents False none of the three item events.
  cats->put_FireItemEvents(VARIANT_FALSE);
  _Category* quiet = AddCategory(cats, L"Quiet");
  if (quiet != nullptr) {
    quiet->put_Color(3);
    LONG quietId = 0;
    quiet->get_ID(&quietId);
    VARIANT position;
    V_VT(&position) = VT_I4;
    V_I4(&position) = 1;
    cats->Delete(position);
    quiet->Release();
  }
  CheckEvents(sink, {}, "no item events with FireItemEvents False");
  VARIANT_BOOL fire = VARIANT_TRUE;
  cats->get_FireItemEvents(&fire);
  TestLog::Check(fire == VARIANT_FALSE, "FireItemEvents reads False");
  cats->put_FireItemEvents(VARIANT_TRUE);

  // A sink that calls back into the model from inside an event: it colours
  // the new category and adds another one; the nested events arrive in
  // between, in the order they happen.
  sink.react = [&](DISPID event, IDispatch* category) {
    if (event != 1 || category == nullptr) return;
    const std::wstring name = t4test::Call(category, L"Name").value.Text();
    if (name == L"Auto") {
      t4test::Put(category, L"Color", t4test::Var::I4(7));
      t4test::Call(cats, L"Add", {t4test::Var::Str(L"Nested"), t4test::Var::Bool(false)});
    } else if (name == L"Gone") {
      t4test::Call(
          cats, L"Delete",
          {t4test::Var::Str(std::to_wstring(t4test::Call(category, L"ID").value.Long()).c_str())});
    }
  };
  _Category* autoCategory = AddCategory(cats, L"Auto");
  LONG color = 0;
  if (autoCategory != nullptr) autoCategory->get_Color(&color);
  TestLog::Check(color == 7, "the sink's edit inside ItemAdd took effect");
  CheckEvents(sink, {L"ItemAdd Auto", L"ItemChange Auto", L"ItemAdd Nested"},
              "events raised from inside an event arrive in order");
  _Category* gone = AddCategory(cats, L"Gone");
  CheckEvents(sink, {L"ItemAdd Gone", L"ItemRemove 4"},
              "a sink may delete the category it is told about");
  VARIANT_BOOL exists = VARIANT_TRUE;
  BSTR goneName = ::SysAllocString(L"Gone");
  cats->NameExist(goneName, nullptr, &exists);
  ::SysFreeString(goneName);
  TestLog::Check(gone != nullptr && NameOf(gone) == L"Gone" && exists == VARIANT_FALSE,
                 "the deleted category stays readable and is gone from the collection");
  if (gone != nullptr) gone->Release();
  if (autoCategory != nullptr) autoCategory->Release();
  sink.react = nullptr;

  // A second sink; EnumConnections lists both.
  t4test::EventRecorder second;
  DWORD secondCookie = 0;
  point->Advise(&second, &secondCookie);
  IEnumConnections* connections = nullptr;
  if (TestLog::CheckHr(point->EnumConnections(&connections), S_OK, "EnumConnections")) {
    CONNECTDATA data[3] = {};
    ULONG fetched = 0;
    TestLog::CheckHr(connections->Next(3, data, &fetched), S_FALSE, "Next(3) of two connections");
    TestLog::Check(fetched == 2 && data[0].dwCookie == cookie && data[1].dwCookie == secondCookie &&
                       data[0].pUnk == static_cast<IUnknown*>(&sink) &&
                       data[1].pUnk == static_cast<IUnknown*>(&second),
                   "EnumConnections lists both sinks with their cookies");
    for (ULONG i = 0; i < fetched; ++i) data[i].pUnk->Release();
    IEnumConnections* clone = nullptr;
    connections->Reset();
    connections->Skip(1);
    if (SUCCEEDED(connections->Clone(&clone)) && clone != nullptr) {
      clone->Next(1, data, &fetched);
      TestLog::Check(fetched == 1 && data[0].dwCookie == secondCookie,
                     "a clone goes on where its original stands");
      if (fetched == 1) data[0].pUnk->Release();
      clone->Release();
    }
    connections->Release();
  }
  AddCategory(cats, L"Both")->Release();
  TestLog::Check(
      sink.events == std::vector<std::wstring>{L"ItemAdd Both"} && second.events == sink.events,
      "every sink hears the event");
  sink.events.clear();
  second.events.clear();
  TestLog::CheckHr(point->Unadvise(cookie), S_OK, "Unadvise the first sink");
  AddCategory(cats, L"After")->Release();
  TestLog::Check(sink.events.empty() && second.events.size() == 1,
                 "an unadvised sink hears nothing more");
  sink.ForgetLast();
  second.ForgetLast();
  TestLog::Check(sink.refs == 1, "Unadvise released the sink",
                 "count " + std::to_string(sink.refs));

  // Releasing the collection ends the connection: the core does not keep
  // the wrapper (or its sinks) alive.
  work->Release();
  point->Release();
  container->Release();
  TestLog::Check(cats->Release() == 0, "Categories released to 0 with a sink still advised");
  TestLog::Check(second.refs == 1, "the dying collection released the advised sink",
                 "count " + std::to_string(second.refs));
  app->get_Categories(&cats);
  if (cats != nullptr) {
    AddCategory(cats, L"Later")->Release();
    TestLog::Check(second.events.size() == 1, "a new Categories object has no old sinks");
    second.ForgetLast();
    TestLog::Check(cats->Release() == 0, "the new Categories object released to 0");
  }
  TestLog::CheckHr(DllCanUnloadNowOfLibrary(), S_FALSE,
                   "DllCanUnloadNow while the Application "
                   "lives");
  TestLog::Check(app->Release() == 0, "Application released to 0");
  TestLog::CheckHr(DllCanUnloadNowOfLibrary(), S_OK, "DllCanUnloadNow after the event tests");
}

}  // namespace t4test
