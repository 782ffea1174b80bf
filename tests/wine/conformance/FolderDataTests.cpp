// The FolderData class of the registered DLL through its vtable.

#include "FolderDataTests.h"

#include <ocidl.h>
#include <olectl.h>
#include <windows.h>

#include <string>

#include "Automation.h"
#include "ConformanceSupport.h"
#include "TestLog.h"
#include "com/Tandrel4_h.h"

namespace t4test {

void TestFolderDataIdentity() {
  // Two objects are two identities.
  IUnknown* first = nullptr;
  IUnknown* second = nullptr;
  ::CoCreateInstance(CLSID_FolderData, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                     reinterpret_cast<void**>(&first));
  ::CoCreateInstance(CLSID_FolderData, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                     reinterpret_cast<void**>(&second));
  TestLog::Check(first && second && first != second, "two FolderData objects are distinct");
  if (first != nullptr) {
    _ILanguage* language2 = nullptr;
    _FolderData* data = nullptr;
    TestLog::CheckHr(first->QueryInterface(IID__ILanguage, reinterpret_cast<void**>(&language2)),
                     S_OK, "QI FolderData _ILanguage");
    TestLog::CheckHr(first->QueryInterface(IID__FolderData, reinterpret_cast<void**>(&data)), S_OK,
                     "QI FolderData _FolderData");
    TestLog::Check(language2 && data && IdentityOf(language2) == first && IdentityOf(data) == first,
                   "FolderData IUnknown is the same from every interface");
    if (language2 != nullptr) language2->Release();
    if (data != nullptr) data->Release();
    TestLog::Check(first->Release() == 0, "FolderData released to 0");
  }
  if (second != nullptr) second->Release();
}

void TestFolderData() {
  auto* folder =
      CreateOrFail<_FolderData>(CLSID_FolderData, IID__FolderData, "FolderData", "not created");
  if (folder == nullptr) return;
  BSTR text = nullptr;
  LONG count = -1;
  VARIANT_BOOL childs = VARIANT_TRUE;
  folder->get_EntryID(&text);
  TestLog::Check(TakeBstr(text).empty(), "fresh FolderData EntryID is empty");
  folder->get_ItemsCount(&count);
  TestLog::Check(count == 0, "fresh FolderData ItemsCount is 0");
  folder->get_HasChilds(&childs);
  TestLog::Check(childs == VARIANT_FALSE, "fresh FolderData HasChilds is False");

  const std::wstring entry(2048, L'A');
  const std::wstring name = L"Bitte w\u00e4hlen \u20ac \U0001F600";
  BSTR entryBstr = ::SysAllocStringLen(entry.data(), static_cast<UINT>(entry.size()));
  BSTR storeBstr = ::SysAllocString(L"0000000038A1BB1005E5101AA1BB08002B2A56C2");
  BSTR nameBstr = ::SysAllocStringLen(name.data(), static_cast<UINT>(name.size()));
  TestLog::CheckHr(folder->Init(entryBstr, storeBstr, nameBstr, 2147483647, VARIANT_TRUE), S_OK,
                   "FolderData Init");
  folder->get_EntryID(&text);
  TestLog::Check(TakeBstr(text) == entry, "EntryID round trip (2048 characters)");
  folder->get_StoreID(&text);
  TestLog::Check(TakeBstr(text) == storeBstr, "StoreID round trip");
  folder->get_Name(&text);
  TestLog::Check(TakeBstr(text) == name, "Name round trip (umlaut, euro sign, surrogate pair)");
  folder->get_ItemsCount(&count);
  TestLog::Check(count == 2147483647, "ItemsCount round trip");
  folder->get_HasChilds(&childs);
  TestLog::Check(childs == VARIANT_TRUE, "HasChilds round trip");
  TestLog::CheckHr(folder->Init(nullptr, nullptr, nullptr, -5, VARIANT_FALSE), S_OK,
                   "FolderData Init with null strings");
  folder->get_Name(&text);
  TestLog::Check(TakeBstr(text).empty(), "null BSTR reads back as empty text");
  folder->get_ItemsCount(&count);
  TestLog::Check(count == -5, "Init replaces ItemsCount");
  TestLog::CheckHr(folder->get_Name(nullptr), E_POINTER, "getter with a null out pointer");
  ::SysFreeString(entryBstr);
  ::SysFreeString(storeBstr);
  ::SysFreeString(nameBstr);

  _ILanguage* language = nullptr;
  TestLog::CheckHr(folder->ToILanguage(&language), S_OK, "FolderData ToILanguage");
  if (language != nullptr) {
    LONG id = 0;
    language->get_LanguageID(&id);
    TestLog::Check(id == 1031, "FolderData LanguageID is 1031");
    language->Release();
  }
  TestLog::Check(folder->Release() == 0, "FolderData released to 0");
}

}  // namespace t4test
