// The rules component of the registered DLL: CategoryRules, MasterlistObject
// and CategoryRulesObject.

#include "CategoryRulesTests.h"

#include <ocidl.h>
#include <olectl.h>
#include <windows.h>

#include <string>

#include "Automation.h"
#include "ConformanceSupport.h"
#include "TestLog.h"
#include "com/Tandrel4_h.h"

namespace t4test {

void TestRulesComponent(IDispatch* outlook, IDispatch* ns, IDispatch* olCats, ULONG outlookRefs) {
  // The rules component on its own: its objects keep Outlook only while
  // they live.
  _CategoryRulesReader* reader = nullptr;
  if (TestLog::CheckHr(
          ::CoCreateInstance(CLSID_CategoryRules, nullptr, CLSCTX_INPROC_SERVER,
                             IID__CategoryRulesReader, reinterpret_cast<void**>(&reader)),
          S_OK, "CoCreateInstance CategoryRules as _CategoryRulesReader")) {
    VARIANT olApp;
    V_VT(&olApp) = VT_DISPATCH;
    V_DISPATCH(&olApp) = outlook;
    IDispatch* list = nullptr;
    TestLog::CheckHr(reader->GetMasterlist(olApp, &list), S_OK, "GetMasterlist through the vtable");
    _MasterlistObject* typed = nullptr;
    if (list != nullptr) {
      list->QueryInterface(IID__MasterlistObject, reinterpret_cast<void**>(&typed));
    }
    BSTR text = nullptr;
    if (typed != nullptr) typed->ReadCategories(&text);
    TestLog::Check(
        std::wstring(text != nullptr ? text : L"").find(L";Work;4;3;") != std::wstring::npos,
        "ReadCategories maps Outlook's numbers", TestLog::Utf8(text));
    ::SysFreeString(text);
    // The list goes in and the identifiers come back through one BSTR*.
    BSTR pairs = ::SysAllocString(L";Errands;-2;-2;;Shopping;3;1");
    if (typed != nullptr) {
      TestLog::CheckHr(typed->WriteCategories(&pairs), S_OK, "WriteCategories through the vtable");
    }
    const std::wstring answer = pairs != nullptr ? pairs : L"";
    ::SysFreeString(pairs);
    TestLog::Check(answer.size() == 94 && answer[0] == L'{' && answer.find(L"};Errands;{") == 37 &&
                       answer.substr(85) == L";Shopping",
                   "WriteCategories hands back CategoryID;Name pairs", TestLog::Utf8(answer));
    TestLog::Check(Call(olCats, L"Count").value.Long() == 3,
                   "an existing name is updated, a new one created");
    // The library calls by name with VT_BYREF|VT_BSTR arguments.
    if (list != nullptr) {
      BSTR byRef = ::SysAllocString(L";Shopping;4;0");
      VARIANT arg;
      V_VT(&arg) = VT_BYREF | VT_BSTR;
      V_BSTRREF(&arg) = &byRef;
      DISPID writeId = DISPID_UNKNOWN;
      LPOLESTR name = const_cast<LPOLESTR>(L"WriteCategories");
      list->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &writeId);
      DISPPARAMS params = {&arg, nullptr, 1, 0};
      TestLog::CheckHr(list->Invoke(writeId, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                    &params, nullptr, nullptr, nullptr),
                       S_OK, "WriteCategories through IDispatch with a BSTR reference");
      const std::wstring back = byRef != nullptr ? byRef : L"";
      TestLog::Check(back.size() == 38 + 9 && back.substr(38) == L";Shopping",
                     "the reference receives the pair", TestLog::Utf8(back));
      ::SysFreeString(byRef);
    }
    IDispatch* rules = nullptr;
    V_VT(&olApp) = VT_BSTR;
    V_BSTR(&olApp) = ::SysAllocString(L"Outlook");
    TestLog::CheckHr(reader->GetCategoryRules(olApp, &rules), static_cast<HRESULT>(0x800A000D),
                     "GetCategoryRules with a text raises 13");
    ::VariantClear(&olApp);
    TestLog::Check(rules == nullptr, "no rules object for a text");
    const ErrorInfoFields info = TakeErrorInfo();
    TestLog::Check(info.present && IsEqualGUID(info.guid, IID__CategoryRulesReader),
                   "the error names _CategoryRulesReader");
    V_VT(&olApp) = VT_DISPATCH;
    V_DISPATCH(&olApp) = outlook;
    _CategoryRulesObject* typedRules = nullptr;
    if (TestLog::CheckHr(reader->GetCategoryRules(olApp, &rules), S_OK,
                         "GetCategoryRules through the vtable") &&
        rules != nullptr) {
      rules->QueryInterface(IID__CategoryRulesObject, reinterpret_cast<void**>(&typedRules));
      rules->Release();
    }
    IDispatch* store = ns != nullptr ? t4test::ObjectOf(Call(ns, L"DefaultStore")) : nullptr;
    IDispatch* olRules = store != nullptr ? t4test::ObjectOf(Call(store, L"GetRules")) : nullptr;
    if (olRules != nullptr && typedRules != nullptr) {
      Call(olRules, L"AddTestRule",
           {Var::Str(L"Sort"), Var::Str(L"Errands"), Var::Str(L"Errands;Shopping")});
      BSTR oldName = ::SysAllocString(L"errands");
      BSTR newName = ::SysAllocString(L"Chores");
      TestLog::CheckHr(typedRules->RenameCategory(&oldName, &newName), S_OK,
                       "RenameCategory through the vtable");
      TestLog::Check(std::wstring(oldName) == L"errands" && std::wstring(newName) == L"Chores",
                     "the names come back through their references");
      ::SysFreeString(oldName);
      ::SysFreeString(newName);
      TestLog::Check(
          Call(olRules, L"RuleText", {Var::I4(1)}).value.Text() == L"Chores|Chores;Shopping",
          "the rule is renamed");
      VARIANT_BOOL changed = VARIANT_FALSE;
      typedRules->get_Changed(&changed);
      TestLog::Check(changed == VARIANT_TRUE, "Changed after the rename");
      TestLog::CheckHr(typedRules->Save(), S_OK, "Save through the vtable");
      TestLog::Check(Call(olRules, L"SaveCount").value.Long() == 1, "the rules saved once");
    } else {
      TestLog::Fail("rules through the vtable", "no rules object or no stand-in rules");
    }
    if (typedRules != nullptr) {
      TestLog::Check(typedRules->Release() == 0, "the rules object released to 0");
    }
    if (olRules != nullptr) olRules->Release();
    if (store != nullptr) store->Release();
    if (typed != nullptr) typed->Release();
    if (list != nullptr) TestLog::Check(list->Release() == 0, "the master list released to 0");
    TestLog::Check(reader->Release() == 0, "CategoryRules released to 0");
  }
  TestLog::Check(RefCount(outlook) == outlookRefs, "the rules component released Outlook");
  TestLog::CheckHr(DllCanUnloadNowOfLibrary(), S_OK, "DllCanUnloadNow after the rules component");
}

}  // namespace t4test
