#include "ScriptHost.h"

#include <activscp.h>

#include "Automation.h"
#include "TestLog.h"

namespace t4test {

namespace {

// A COM object on the stack: reference counting without deletion.
template <class I>
class StackObject : public I {
 public:
  ULONG STDMETHODCALLTYPE AddRef() override { return ++refs_; }
  ULONG STDMETHODCALLTYPE Release() override { return --refs_; }

 private:
  ULONG refs_ = 1;
};

// The named item T: Check(ok, name, detail).
class Checker final : public StackDispatch {
 public:
  explicit Checker(std::string prefix) : prefix_(std::move(prefix)) {}
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override {
    if (count != 1 || ::lstrcmpiW(names[0], L"Check") != 0) {
      ids[0] = DISPID_UNKNOWN;
      return DISP_E_UNKNOWNNAME;
    }
    ids[0] = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*,
                                   EXCEPINFO*, UINT*) override {
    if (id != 1 || params->cArgs != 3) return DISP_E_BADPARAMCOUNT;
    // Arguments arrive last first: detail, name, ok.
    VARIANT ok, name, detail;
    ::VariantInit(&ok);
    ::VariantInit(&name);
    ::VariantInit(&detail);
    ::VariantChangeType(&ok, &params->rgvarg[2], 0, VT_BOOL);
    ::VariantChangeType(&name, &params->rgvarg[1], 0, VT_BSTR);
    ::VariantChangeType(&detail, &params->rgvarg[0], 0, VT_BSTR);
    TestLog::Check(V_VT(&ok) == VT_BOOL && V_BOOL(&ok) != VARIANT_FALSE,
                   prefix_ + TestLog::Utf8(V_VT(&name) == VT_BSTR ? V_BSTR(&name) : L"?"),
                   TestLog::Utf8(V_VT(&detail) == VT_BSTR ? V_BSTR(&detail) : L"?"));
    ::VariantClear(&name);
    ::VariantClear(&detail);
    return S_OK;
  }

 private:
  std::string prefix_;
};

class Site final : public StackObject<IActiveScriptSite> {
 public:
  Site(const std::vector<std::pair<std::wstring, IDispatch*>>& objects, IDispatch* checker)
      : objects_(objects), checker_(checker) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
    if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IActiveScriptSite)) {
      AddRef();
      *object = static_cast<IActiveScriptSite*>(this);
      return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
  }
  HRESULT STDMETHODCALLTYPE GetLCID(LCID* lcid) override {
    *lcid = LOCALE_USER_DEFAULT;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR name, DWORD mask, IUnknown** item,
                                        ITypeInfo** info) override {
    if (info != nullptr) *info = nullptr;
    if (item != nullptr) *item = nullptr;
    if ((mask & SCRIPTINFO_ITYPEINFO) != 0) return TYPE_E_ELEMENTNOTFOUND;
    IDispatch* found = ::lstrcmpiW(name, L"T") == 0 ? checker_ : nullptr;
    for (const auto& [itemName, object] : objects_) {
      if (::lstrcmpiW(name, itemName.c_str()) == 0) found = object;
    }
    if (found == nullptr || item == nullptr) return TYPE_E_ELEMENTNOTFOUND;
    found->AddRef();
    *item = found;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR* version) override {
    *version = nullptr;
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override {
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError* scriptError) override {
    EXCEPINFO excep = {};
    DWORD context = 0;
    ULONG line = 0;
    LONG column = 0;
    scriptError->GetExceptionInfo(&excep);
    scriptError->GetSourcePosition(&context, &line, &column);
    error = L"line " + std::to_wstring(line + 1) + L": " +
            (excep.bstrDescription != nullptr ? excep.bstrDescription : L"") + L" (" +
            std::to_wstring(static_cast<unsigned long>(excep.scode)) + L")";
    ::SysFreeString(excep.bstrDescription);
    ::SysFreeString(excep.bstrSource);
    ::SysFreeString(excep.bstrHelpFile);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }

  std::wstring error;

 private:
  const std::vector<std::pair<std::wstring, IDispatch*>>& objects_;
  IDispatch* checker_;
};

// Runs `code` in the script engine of ProgID `language`; checks are
// reported with `prefix` in front of their names.
bool RunScript(const wchar_t* language, const std::string& prefix, const std::wstring& code,
               const std::vector<std::pair<std::wstring, IDispatch*>>& objects,
               std::wstring& error) {
  CLSID clsid = GUID_NULL;
  if (FAILED(::CLSIDFromProgID(language, &clsid))) {
    error = std::wstring(L"no engine for ") + language;
    return false;
  }
  IActiveScript* engine = nullptr;
  if (FAILED(::CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IActiveScript,
                                reinterpret_cast<void**>(&engine)))) {
    error = std::wstring(language) + L" engine not created";
    return false;
  }
  IActiveScriptParse* parse = nullptr;
  engine->QueryInterface(__uuidof(IActiveScriptParse), reinterpret_cast<void**>(&parse));
  Checker checker(prefix);
  Site site(objects, &checker);
  bool ok =
      parse != nullptr && SUCCEEDED(parse->InitNew()) && SUCCEEDED(engine->SetScriptSite(&site));
  ok = ok && SUCCEEDED(engine->AddNamedItem(L"T", SCRIPTITEM_ISVISIBLE));
  for (const auto& object : objects) {
    ok = ok && SUCCEEDED(engine->AddNamedItem(object.first.c_str(), SCRIPTITEM_ISVISIBLE));
  }
  // Started: the text runs as soon as it is parsed.
  ok = ok && SUCCEEDED(engine->SetScriptState(SCRIPTSTATE_STARTED));
  EXCEPINFO excep = {};
  if (ok) {
    const HRESULT hr = parse->ParseScriptText(code.c_str(), nullptr, nullptr, nullptr, 0, 0,
                                              SCRIPTTEXT_ISVISIBLE, nullptr, &excep);
    ::SysFreeString(excep.bstrDescription);
    ::SysFreeString(excep.bstrSource);
    ::SysFreeString(excep.bstrHelpFile);
    ok = SUCCEEDED(hr) && site.error.empty();
    if (!ok && site.error.empty()) {
      site.error = L"ParseScriptText failed: " + std::to_wstring(static_cast<unsigned long>(hr));
    }
  } else {
    site.error = L"the engine could not be set up";
  }
  engine->Close();
  if (parse != nullptr) parse->Release();
  engine->Release();
  error = site.error;
  return ok;
}

}  // namespace

bool RunVBScript(const std::wstring& code,
                 const std::vector<std::pair<std::wstring, IDispatch*>>& objects,
                 std::wstring& error) {
  return RunScript(L"VBScript", "vbs: ", code, objects, error);
}

bool RunJScript(const std::wstring& code,
                const std::vector<std::pair<std::wstring, IDispatch*>>& objects,
                std::wstring& error) {
  return RunScript(L"JScript", "js: ", code, objects, error);
}

}  // namespace t4test
