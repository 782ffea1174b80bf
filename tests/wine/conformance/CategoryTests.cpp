// The Category class of the registered DLL through its vtable.

#include "CategoryTests.h"

#include <ocidl.h>
#include <olectl.h>
#include <windows.h>

#include <string>

#include "Automation.h"
#include "ConformanceSupport.h"
#include "TestLog.h"
#include "com/Tandrel4_h.h"

namespace t4test {

void TestErrorsAndTerminate() {
  _Application* app = NewApplicationOrFail("errors and Terminate");
  if (app == nullptr) return;
  _Categories* cats = nullptr;
  app->get_Categories(&cats);
  _Category* work = cats != nullptr ? AddCategory(cats, L"Work") : nullptr;
  _Category* home = cats != nullptr ? AddCategory(cats, L"Home") : nullptr;
  if (!TestLog::Check(work && home, "two categories for the error tests")) {
    if (work != nullptr) work->Release();
    if (home != nullptr) home->Release();
    if (cats != nullptr) cats->Release();
    app->Release();
    return;
  }
  BSTR taken = ::SysAllocString(L"WORK");
  TestLog::CheckHr(home->put_Name(taken), static_cast<HRESULT>(0xD080222A),
                   "renaming to a taken name returns cmNameExist");
  ::SysFreeString(taken);
  ErrorInfoFields info = TakeErrorInfo();
  TestLog::Check(
      info.present && info.description ==
                          L"Der Name existiert bereits.\r\n\r\nBitte w\u00e4hlen Sie einen anderen "
                          L"Namen.",
      "cmNameExist description with its line breaks", TestLog::Utf8(info.description));
  TestLog::Check(info.source == L"Tandrel4; Tandrel4.Category.Name (0)" &&
                     IsEqualIID(info.guid, IID__Category),
                 "cmNameExist source trail and interface", TestLog::Utf8(info.source));
  TestLog::Check(NameOf(home) == L"Home", "the failed rename leaves the name");

  TestLog::CheckHr(app->Terminate(), S_OK, "Terminate");
  TestLog::Check(NameOf(work) == L"Work", "after Terminate a held category's Name is readable");
  TestLog::CheckHr(work->put_Color(3), static_cast<HRESULT>(0x800A005B),
                   "after Terminate setting Color returns error 91");
  info = TakeErrorInfo();
  TestLog::Check(info.source == L"Tandrel4; Tandrel4.Category.Color (0)" &&
                     info.description == L"Object variable or With block variable not set",
                 "error 91 text and source trail", TestLog::Utf8(info.source));
  _Categories* none = reinterpret_cast<_Categories*>(1);
  TestLog::CheckHr(app->get_Categories(&none), S_OK, "Categories after Terminate");
  TestLog::Check(none == nullptr, "Categories after Terminate is Nothing");
  LONG count = -1;
  VARIANT missing = MissingArgument();
  cats->get_Count(missing, &count);
  TestLog::Check(count == 2, "a Categories object held over Terminate still counts");
  TestLog::Check(work->Release() == 0 && home->Release() == 0,
                 "held categories released to 0 after Terminate");
  TestLog::Check(cats->Release() == 0, "held Categories released to 0 after Terminate");
  TestLog::Check(app->Release() == 0, "terminated Application released to 0");
  TestLog::CheckHr(DllCanUnloadNowOfLibrary(), S_OK,
                   "DllCanUnloadNow after Terminate and release of everything");
}

}  // namespace t4test
