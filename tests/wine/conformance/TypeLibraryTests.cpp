// The type library of the registered DLL, read back through ITypeLib.

#include "TypeLibraryTests.h"

#include <ocidl.h>
#include <olectl.h>
#include <windows.h>

#include <string>
#include <vector>

#include "Automation.h"
#include "DispatchProbe.h"
#include "ObjectModel.h"
#include "TestLog.h"
#include "com/Tandrel4_h.h"

namespace t4test {

namespace {

// Each dual interface: its name, help string, member count and slot order.
void CheckInterfaces(ITypeLib* lib) {
  for (const t4test::InterfaceModel& model : t4test::kInterfaces) {
    const std::string label = model.name;
    ITypeInfo* dispatchView = nullptr;
    if (!TestLog::CheckHr(lib->GetTypeInfoOfGuid(*model.iid, &dispatchView), S_OK,
                          label + " is in the type library")) {
      continue;
    }
    TYPEATTR* attr = nullptr;
    dispatchView->GetTypeAttr(&attr);
    TestLog::Check(attr->typekind == TKIND_DISPATCH && (attr->wTypeFlags & TYPEFLAG_FDUAL),
                   label + " is a dual interface");
    dispatchView->ReleaseTypeAttr(attr);
    TestLog::Check(
        t4test::MemberName(dispatchView, MEMBERID_NIL) == std::wstring(label.begin(), label.end()),
        label + " has its name");
    BSTR doc = nullptr;
    dispatchView->GetDocumentation(MEMBERID_NIL, nullptr, &doc, nullptr, nullptr);
    TestLog::Check(!TakeBstr(doc).empty(), label + " has a help string");
    dispatchView->Release();

    ITypeInfo* info = nullptr;
    if (FAILED(t4test::VtableTypeInfo(lib, *model.iid, &info))) {
      TestLog::Fail(label + " vtable view", "missing");
      continue;
    }
    info->GetTypeAttr(&attr);
    const size_t expected = model.members.size();
    TestLog::Check(attr->typekind == TKIND_INTERFACE && attr->cFuncs == expected,
                   label + " has " + std::to_string(expected) + " members",
                   "has " + std::to_string(attr->cFuncs));
    const UINT funcs = attr->cFuncs;
    info->ReleaseTypeAttr(attr);
    std::string order;
    bool inOrder = funcs == expected;
    bool helped = true;
    size_t slot = 0;
    for (const t4test::Member& member : model.members) {
      if (slot >= funcs) break;
      FUNCDESC* func = nullptr;
      info->GetFuncDesc(static_cast<UINT>(slot), &func);
      const std::wstring name = t4test::MemberName(info, func->memid);
      if (name != member.name || func->invkind != member.kind) {
        inOrder = false;
        order += " slot " + std::to_string(slot) + " is " + TestLog::Utf8(name);
      }
      BSTR memberDoc = nullptr;
      info->GetDocumentation(func->memid, nullptr, &memberDoc, nullptr, nullptr);
      if (TakeBstr(memberDoc).empty()) helped = false;
      info->ReleaseFuncDesc(func);
      ++slot;
    }
    TestLog::Check(inOrder, label + " members in slot order", order);
    TestLog::Check(helped, label + " members all have help strings");
    info->Release();
  }
}

// The dispatch ids of the collections' Item (DISPID_VALUE) and NewEnum
// (DISPID_NEWENUM, hidden and restricted).
void CheckMemberIds(ITypeLib* lib) {
  struct MemberCheck {
    const IID* iid;
    const wchar_t* name;
    INVOKEKIND kind;
    MEMBERID memid;
    bool hiddenRestricted;
  };
  const MemberCheck memberChecks[] = {
      {&IID__Categories, L"Item", INVOKE_PROPERTYGET, DISPID_VALUE, false},
      {&IID__Categories, L"NewEnum", INVOKE_PROPERTYGET, DISPID_NEWENUM, true},
      {&IID__OutlookItems, L"Item", INVOKE_PROPERTYGET, DISPID_VALUE, false},
      {&IID__OutlookItems, L"NewEnum", INVOKE_PROPERTYGET, DISPID_NEWENUM, true},
      {&IID__Category, L"NewEnum", INVOKE_PROPERTYGET, DISPID_NEWENUM, true},
  };
  for (const MemberCheck& check : memberChecks) {
    ITypeInfo* info = nullptr;
    t4test::VtableTypeInfo(lib, *check.iid, &info);
    if (info == nullptr) continue;
    TYPEATTR* attr = nullptr;
    info->GetTypeAttr(&attr);
    bool found = false;
    for (UINT i = 0; i < attr->cFuncs && !found; ++i) {
      FUNCDESC* func = nullptr;
      info->GetFuncDesc(i, &func);
      if (t4test::MemberName(info, func->memid) == check.name && func->invkind == check.kind) {
        found = true;
        const bool flags = !check.hiddenRestricted || ((func->wFuncFlags & FUNCFLAG_FHIDDEN) &&
                                                       (func->wFuncFlags & FUNCFLAG_FRESTRICTED));
        TestLog::Check(func->memid == check.memid && flags,
                       TestLog::Utf8(t4test::MemberName(info, MEMBERID_NIL)) + "." +
                           TestLog::Utf8(check.name) + " has DISPID " + std::to_string(check.memid),
                       "memid " + std::to_string(func->memid));
      }
      info->ReleaseFuncDesc(func);
    }
    if (!found) TestLog::Fail(TestLog::Utf8(check.name), "member not found");
    info->ReleaseTypeAttr(attr);
    info->Release();
  }
}

// Optional and by-reference parameters.
void CheckParameters(ITypeLib* lib) {
  struct ParamCheck {
    const IID* iid;
    const wchar_t* member;
    SHORT index;
    VARTYPE pointee;  // VT_EMPTY: not by reference
    VARTYPE type;
    USHORT flags;  // flags that must be set
  };
  const USHORT inOut = PARAMFLAG_FIN | PARAMFLAG_FOUT;
  const ParamCheck paramChecks[] = {
      {&IID__Categories, L"NameExist", 1, VT_VARIANT, VT_PTR,
       static_cast<USHORT>(inOut | PARAMFLAG_FOPT)},
      {&IID__Categories, L"CountDetails", 0, VT_VARIANT, VT_PTR, inOut},
      {&IID__Categories, L"CountDetails", 1, VT_VARIANT, VT_PTR, inOut},
      {&IID__Application, L"ReadItems", 0, VT_VARIANT, VT_PTR, inOut},
      {&IID__Categories, L"Item", 1, VT_EMPTY, VT_VARIANT, PARAMFLAG_FOPT},
      {&IID__Categories, L"Count", 0, VT_EMPTY, VT_VARIANT, PARAMFLAG_FOPT},
      {&IID__Categories, L"Add", 2, VT_EMPTY, VT_VARIANT, PARAMFLAG_FOPT},
      {&IID__Categories, L"Add", 4, VT_EMPTY, VT_VARIANT, PARAMFLAG_FOPT},
      {&IID__Category, L"Member", 1, VT_EMPTY, VT_VARIANT, PARAMFLAG_FOPT},
      {&IID__IChild, L"Init", 1, VT_EMPTY, VT_VARIANT, PARAMFLAG_FOPT},
  };
  for (const ParamCheck& check : paramChecks) {
    ITypeInfo* info = nullptr;
    t4test::VtableTypeInfo(lib, *check.iid, &info);
    if (info == nullptr) continue;
    const std::string label =
        "parameter " + std::to_string(check.index) + " of " + TestLog::Utf8(check.member);
    LPOLESTR name = const_cast<LPOLESTR>(check.member);
    MEMBERID memid = 0;
    info->GetIDsOfNames(&name, 1, &memid);
    TYPEATTR* attr = nullptr;
    info->GetTypeAttr(&attr);
    bool ok = false;
    for (UINT i = 0; i < attr->cFuncs; ++i) {
      FUNCDESC* func = nullptr;
      info->GetFuncDesc(i, &func);
      if (func->memid == memid && func->invkind != INVOKE_PROPERTYPUT &&
          check.index < func->cParams) {
        const ELEMDESC& param = func->lprgelemdescParam[check.index];
        ok = param.tdesc.vt == check.type &&
             (check.pointee == VT_EMPTY || param.tdesc.lptdesc->vt == check.pointee) &&
             (param.paramdesc.wParamFlags & check.flags) == check.flags;
      }
      info->ReleaseFuncDesc(func);
    }
    TestLog::Check(ok,
                   label + (check.pointee != VT_EMPTY ? " is VARIANT* in/out" : " is optional"));
    info->ReleaseTypeAttr(attr);
    info->Release();
  }
}

// The three enums: their names and values, in order.
void CheckEnums(ITypeLib* lib) {
  struct EnumValue {
    const wchar_t* name;
    LONG value;
  };
  const struct {
    const wchar_t* name;
    std::vector<EnumValue> values;
  } enums[] = {
      {L"cmErrorEnum",
       {{L"cmNameExist", static_cast<LONG>(0xD080222A)},
        {L"cmInvalidOutlook", static_cast<LONG>(0xD0802234)},
        {L"cmItemNotFound", static_cast<LONG>(0xD080223E)},
        {L"cmFileTypeNotSupported", static_cast<LONG>(0xD0802248)},
        {L"cmCreateFile", static_cast<LONG>(0xD0802252)}}},
      {L"cmFilterMember", {{L"cmfmAll", 0}, {L"cmfmMemberOnly", 1}, {L"cmfmNoMember", 2}}},
      {L"cmFilterMasterlist",
       {{L"cmmlAll", 0}, {L"cmmlMasterlistOnly", 1}, {L"cmmlNoMasterlist", 2}}},
  };
  for (const auto& expected : enums) {
    const std::string label = TestLog::Utf8(expected.name);
    ITypeInfo* info = nullptr;
    MEMBERID ids[1] = {};
    USHORT found = 1;
    LPOLESTR name = const_cast<LPOLESTR>(expected.name);
    if (FAILED(lib->FindName(name, 0, &info, ids, &found)) || found == 0) {
      TestLog::Fail(label, "enum not found");
      continue;
    }
    TYPEATTR* attr = nullptr;
    info->GetTypeAttr(&attr);
    bool ok = attr->typekind == TKIND_ENUM && attr->cVars == expected.values.size();
    for (UINT i = 0; ok && i < attr->cVars; ++i) {
      VARDESC* var = nullptr;
      info->GetVarDesc(i, &var);
      VARIANT value;
      ::VariantInit(&value);
      ::VariantChangeType(&value, var->lpvarValue, 0, VT_I4);
      ok = t4test::MemberName(info, var->memid) == expected.values[i].name &&
           V_I4(&value) == expected.values[i].value;
      info->ReleaseVarDesc(var);
    }
    info->ReleaseTypeAttr(attr);
    info->Release();
    TestLog::Check(ok, "enum " + label + " names and values");
  }
}

// The two event dispinterfaces: their methods in order with dispatch ids
// from 1, and Progress's by-reference bCancel.
void CheckEventInterfaces(ITypeLib* lib) {
  const struct {
    const IID* iid;
    std::vector<const wchar_t*> methods;
  } sources[] = {
      {&DIID___Application, {L"Progress"}},
      {&DIID___Categories,
       {L"ItemAdd", L"ItemChange", L"ItemRemove", L"MemberAdd", L"MemberRemove"}},
  };
  for (const auto& source : sources) {
    ITypeInfo* info = nullptr;
    if (FAILED(lib->GetTypeInfoOfGuid(*source.iid, &info))) {
      TestLog::Fail("event interface", "missing");
      continue;
    }
    const std::string label = TestLog::Utf8(t4test::MemberName(info, MEMBERID_NIL));
    TYPEATTR* attr = nullptr;
    info->GetTypeAttr(&attr);
    bool ok = attr->typekind == TKIND_DISPATCH && !(attr->wTypeFlags & TYPEFLAG_FDUAL) &&
              attr->cFuncs == source.methods.size();
    for (UINT i = 0; ok && i < attr->cFuncs; ++i) {
      FUNCDESC* func = nullptr;
      info->GetFuncDesc(i, &func);
      ok = t4test::MemberName(info, func->memid) == source.methods[i] &&
           func->memid == static_cast<MEMBERID>(i + 1);
      if (ok && std::wstring(source.methods[i]) == L"Progress") {
        // bCancel is [in, out] VARIANT_BOOL*, VB's ByRef bCancel As Boolean.
        ok = func->cParams == 3 && func->lprgelemdescParam[2].tdesc.vt == VT_PTR &&
             func->lprgelemdescParam[2].tdesc.lptdesc->vt == VT_BOOL &&
             (func->lprgelemdescParam[2].paramdesc.wParamFlags &
              (PARAMFLAG_FIN | PARAMFLAG_FOUT)) == (PARAMFLAG_FIN | PARAMFLAG_FOUT);
      }
      info->ReleaseFuncDesc(func);
    }
    info->ReleaseTypeAttr(attr);
    info->Release();
    TestLog::Check(ok, "events " + label + " in order");
  }
}

// Classes: three creatable, six reached only through the object model.
void CheckClasses(ITypeLib* lib) {
  const struct {
    const CLSID* clsid;
    const wchar_t* name;
    bool creatable;
    const IID* defaultItf;
    const IID* source;
  } classes[] = {
      {&CLSID_Application, L"Application", true, &IID__Application, &DIID___Application},
      {&CLSID_FolderData, L"FolderData", true, &IID__FolderData, nullptr},
      {&CLSID_Categories, L"Categories", false, &IID__Categories, &DIID___Categories},
      {&CLSID_Category, L"Category", false, &IID__Category, nullptr},
      {&CLSID_OutlookItems, L"OutlookItems", false, &IID__OutlookItems, nullptr},
      {&CLSID_OutlookItem, L"OutlookItem", false, &IID__OutlookItem, nullptr},
      {&CLSID_CategoryRules, L"CategoryRules", true, &IID__CategoryRulesReader, nullptr},
      {&CLSID_MasterlistObject, L"MasterlistObject", false, &IID__MasterlistObject, nullptr},
      {&CLSID_CategoryRulesObject, L"CategoryRulesObject", false, &IID__CategoryRulesObject,
       nullptr},
  };
  for (const auto& cls : classes) {
    const std::string label = "coclass " + TestLog::Utf8(cls.name);
    ITypeInfo* info = nullptr;
    if (FAILED(lib->GetTypeInfoOfGuid(*cls.clsid, &info))) {
      TestLog::Fail(label, "missing");
      continue;
    }
    TYPEATTR* attr = nullptr;
    info->GetTypeAttr(&attr);
    bool ok = attr->typekind == TKIND_COCLASS &&
              ((attr->wTypeFlags & TYPEFLAG_FCANCREATE) != 0) == cls.creatable &&
              t4test::MemberName(info, MEMBERID_NIL) == cls.name;
    bool defaultFound = false;
    bool sourceFound = cls.source == nullptr;
    for (UINT i = 0; i < attr->cImplTypes; ++i) {
      INT flags = 0;
      HREFTYPE ref = 0;
      ITypeInfo* impl = nullptr;
      info->GetImplTypeFlags(i, &flags);
      info->GetRefTypeOfImplType(i, &ref);
      info->GetRefTypeInfo(ref, &impl);
      TYPEATTR* implAttr = nullptr;
      impl->GetTypeAttr(&implAttr);
      if ((flags & IMPLTYPEFLAG_FDEFAULT) && !(flags & IMPLTYPEFLAG_FSOURCE) &&
          IsEqualIID(implAttr->guid, *cls.defaultItf)) {
        defaultFound = true;
      }
      if (cls.source && (flags & IMPLTYPEFLAG_FDEFAULT) && (flags & IMPLTYPEFLAG_FSOURCE) &&
          IsEqualIID(implAttr->guid, *cls.source)) {
        sourceFound = true;
      }
      impl->ReleaseTypeAttr(implAttr);
      impl->Release();
    }
    info->ReleaseTypeAttr(attr);
    info->Release();
    TestLog::Check(ok && defaultFound && sourceFound,
                   label + (cls.creatable ? " creatable" : " noncreatable") +
                       " with its default and source interfaces");
  }
}

}  // namespace

void TestTypeLibrary() {
  ITypeLib* lib = nullptr;
  if (!TestLog::CheckHr(::LoadRegTypeLib(LIBID_Tandrel4, 1, 0, 0, &lib), S_OK,
                        "LoadRegTypeLib Tandrel4 1.0")) {
    return;
  }
  BSTR libName = nullptr;
  lib->GetDocumentation(-1, &libName, nullptr, nullptr, nullptr);
  TestLog::Check(TakeBstr(libName) == L"Tandrel4", "type library name is Tandrel4");
  CheckInterfaces(lib);
  CheckMemberIds(lib);
  CheckParameters(lib);
  CheckEnums(lib);
  CheckEventInterfaces(lib);
  CheckClasses(lib);
  lib->Release();
}

}  // namespace t4test
