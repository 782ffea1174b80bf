#include "ProgressTests.h"

#include <ocidl.h>
#include <windows.h>

#include <string>
#include <utility>
#include <vector>

#include "Automation.h"
#include "ConformanceSupport.h"
#include "TestLog.h"
#include "com/Tandrel4_h.h"

namespace t4test {

namespace {

// A __Application sink as a VB client with WithEvents gets it called:
// Progress (dispatch id 1) with lValue, lMax and bCancel as
// VT_BYREF|VT_BOOL. It records each call, answers bCancel with True, and
// reads OutlookItems.Count from inside the event.
class ProgressSink final : public StackDispatch {
 public:
  explicit ProgressSink(_Application* app) noexcept
      : StackDispatch(DIID___Application), app_(app) {}

  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*,
                                   EXCEPINFO*, UINT*) override {
    if (id != 1 || params->cArgs != 3) {
      ++malformed;
      return S_OK;
    }
    // Arguments arrive last first.
    const VARIANT& cancel = params->rgvarg[0];
    const VARIANT& max = params->rgvarg[1];
    const VARIANT& value = params->rgvarg[2];
    if (V_VT(&cancel) != (VT_BYREF | VT_BOOL) || V_VT(&max) != VT_I4 || V_VT(&value) != VT_I4) {
      ++malformed;
      return S_OK;
    }
    calls.emplace_back(V_I4(&value), V_I4(&max));
    if (*V_BOOLREF(&cancel) != VARIANT_FALSE) ++cancelSeen;
    *V_BOOLREF(&cancel) = VARIANT_TRUE;
    _OutlookItems* items = nullptr;
    LONG count = -1;
    if (SUCCEEDED(app_->get_OutlookItems(&items)) && items != nullptr &&
        SUCCEEDED(items->get_Count(&count))) {
      ++callbacksAnswered;
    }
    if (items != nullptr) items->Release();
    return S_OK;
  }

  std::vector<std::pair<LONG, LONG>> calls;
  int malformed = 0;
  int cancelSeen = 0;
  int callbacksAnswered = 0;

 private:
  _Application* app_;
};

_FolderData* NewFolder(const wchar_t* entryId, const wchar_t* storeId, const wchar_t* name,
                       LONG count) {
  _FolderData* folder = nullptr;
  if (FAILED(::CoCreateInstance(CLSID_FolderData, nullptr, CLSCTX_INPROC_SERVER, IID__FolderData,
                                reinterpret_cast<void**>(&folder)))) {
    return nullptr;
  }
  BSTR e = ::SysAllocString(entryId);
  BSTR s = ::SysAllocString(storeId);
  BSTR n = ::SysAllocString(name);
  folder->Init(e, s, n, count, VARIANT_FALSE);
  ::SysFreeString(e);
  ::SysFreeString(s);
  ::SysFreeString(n);
  return folder;
}

std::wstring ProgramFolder() {
  wchar_t path[MAX_PATH] = {};
  ::GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring folder(path);
  return folder.substr(0, folder.find_last_of(L'\\'));
}

std::string Text(const std::vector<std::pair<LONG, LONG>>& calls) {
  std::string text;
  for (const auto& [value, max] : calls) {
    text += std::to_string(value) + "/" + std::to_string(max) + " ";
  }
  return text;
}

}  // namespace

void TestProgressEvents() {
  IDispatch* outlook = NewOutlookStandInOrFail("Progress");
  if (outlook == nullptr) return;
  Call(outlook, L"Reset");
  Put(outlook, L"Version", Var::Str(L"11.0.0.8312"));
  const std::wstring fixture = ProgramFolder() + L"\\mailbox.txt";
  TestLog::Check(Call(outlook, L"LoadMailbox", {Var::Str(fixture.c_str())}).Ok(),
                 "Progress: the test mailbox loads");

  _Application* app = NewApplicationOrFail("Progress");
  if (app == nullptr) {
    outlook->Release();
    return;
  }
  TestLog::CheckHr(app->Initialize(outlook), S_OK, "Progress: Initialize with the stand-in");
  IConnectionPointContainer* container = nullptr;
  IConnectionPoint* point = nullptr;
  app->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&container));
  if (container != nullptr) container->FindConnectionPoint(DIID___Application, &point);
  ProgressSink sink(app);
  DWORD cookie = 0;
  TestLog::CheckHr(point != nullptr ? point->Advise(&sink, &cookie) : E_NOINTERFACE, S_OK,
                   "Progress: a sink advised on __Application");

  // Inbox (3 items), the junk folder (1), Projects (2), as a VB array.
  _FolderData* folders[] = {NewFolder(L"0000F001", L"0000AA01", L"Inbox", 3),
                            NewFolder(L"0000F002", L"0000AA01", L"Junk E-mail", 1),
                            NewFolder(L"0000F003", L"0000AA01", L"Projects", 2)};
  SAFEARRAY* array = ::SafeArrayCreateVector(VT_VARIANT, 0, 3);
  for (LONG i = 0; i < 3; ++i) {
    VARIANT element;
    V_VT(&element) = VT_DISPATCH;
    V_DISPATCH(&element) = folders[i];
    ::SafeArrayPutElement(array, &i, &element);
  }
  VARIANT list;
  V_VT(&list) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(&list) = array;
  TestLog::CheckHr(app->ReadItems(&list), S_OK, "Progress: ReadItems");
  ::VariantClear(&list);

  const std::vector<std::pair<LONG, LONG>> expected = {{1, 3}, {2, 3}, {3, 3}, {1, 2}, {2, 2}};
  TestLog::Check(sink.malformed == 0, "Progress: lValue and lMax as Long, bCancel by reference",
                 std::to_string(sink.malformed) + " malformed");
  TestLog::Check(sink.calls == expected,
                 "Progress: once per item, 1 to n of n per folder, none for the junk folder",
                 Text(sink.calls));
  TestLog::Check(sink.cancelSeen == 0, "Progress: bCancel starts False at every call",
                 std::to_string(sink.cancelSeen));
  TestLog::Check(sink.callbacksAnswered == static_cast<int>(sink.calls.size()),
                 "Progress: the sink calls back into the library");
  _OutlookItems* items = nullptr;
  LONG count = 0;
  if (SUCCEEDED(app->get_OutlookItems(&items)) && items != nullptr) items->get_Count(&count);
  if (items != nullptr) items->Release();
  TestLog::Check(count >= 5, "Progress: bCancel True does not stop the reading",
                 std::to_string(count) + " items");

  if (point != nullptr) {
    TestLog::CheckHr(point->Unadvise(cookie), S_OK, "Progress: Unadvise");
    sink.calls.clear();
    SAFEARRAY* one = ::SafeArrayCreateVector(VT_VARIANT, 0, 1);
    LONG first = 0;
    VARIANT element;
    V_VT(&element) = VT_DISPATCH;
    V_DISPATCH(&element) = folders[2];
    ::SafeArrayPutElement(one, &first, &element);
    VARIANT again;
    V_VT(&again) = VT_ARRAY | VT_VARIANT;
    V_ARRAY(&again) = one;
    app->ReadItems(&again);
    ::VariantClear(&again);
    TestLog::Check(sink.calls.empty(), "Progress: an unadvised sink hears nothing");
    point->Release();
  }
  if (container != nullptr) container->Release();
  app->Terminate();
  for (_FolderData* folder : folders) {
    if (folder != nullptr) folder->Release();
  }
  TestLog::Check(app->Release() == 0, "Progress: Application released to 0");
  TestLog::Check(sink.refs == 1, "Progress: the sink is released",
                 "count " + std::to_string(sink.refs));
  outlook->Release();
}

}  // namespace t4test
