#pragma once

// Small hand-written automation objects for the tests of the late-bound
// adapters: members are registered by name with a handler that sees the
// arguments in the order the caller wrote them.
#include <windows.h>

#include <gtest/gtest.h>
#include <oaidl.h>

#include <atomic>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/win32/ComPtr.h"
#include "support/TextCase.h"

namespace t4::test {

// COM for the thread of each test, as Outlook's add-in thread has it.
class ComTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(SUCCEEDED(::CoInitialize(nullptr))); }
  void TearDown() override { ::CoUninitialize(); }
};

// One call a FakeDispatch received.
struct FakeCall {
  std::u16string name;
  WORD flags = 0;
  // In the caller's order; for a property put without `value`.
  std::vector<VARIANT*> args;
  VARIANT* value = nullptr;  // the value of a property put
  VARIANT* result = nullptr;
  EXCEPINFO* exception = nullptr;
  bool IsPut() const { return (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0; }
};

// The reference counting and QueryInterface of every hand-written test
// object: one reference at creation, deleted by its last Release, and
// `Interface` (identified by `iid`) as the one interface besides IUnknown.
template <class Interface, const IID* iid>
class FakeUnknown : public Interface {
 public:
  ULONG References() const { return references_; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override {
    if (object == nullptr) return E_POINTER;
    if (IsEqualIID(wanted, IID_IUnknown) || IsEqualIID(wanted, *iid)) {
      *object = static_cast<Interface*>(this);
      AddRef();
      return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  virtual ~FakeUnknown() = default;

 private:
  std::atomic<ULONG> references_{1};
};

class FakeDispatch : public FakeUnknown<IDispatch, &IID_IDispatch> {
 public:
  using Member = std::function<HRESULT(FakeCall&)>;

  // The object with one reference, which the caller owns.
  FakeDispatch() = default;

  void On(std::u16string name, Member member) {
    members_.emplace_back(std::move(name), std::move(member));
  }
  // A read-only property with a fixed text.
  void Text(std::u16string name, std::u16string value) {
    On(std::move(name), [value](FakeCall& c) {
      V_VT(c.result) = VT_BSTR;
      V_BSTR(c.result) = ::SysAllocStringLen(reinterpret_cast<const OLECHAR*>(value.data()),
                                             static_cast<UINT>(value.size()));
      return S_OK;
    });
  }
  // A property handing out `object` (a new reference each time).
  void Child(std::u16string name, IDispatch* object) {
    On(std::move(name), [object](FakeCall& c) {
      object->AddRef();
      V_VT(c.result) = VT_DISPATCH;
      V_DISPATCH(c.result) = object;
      return S_OK;
    });
  }

  std::vector<std::u16string> log;

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  // Names compare without regard to letter case, as in every automation
  // server built on type information.
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override {
    if (count != 1) return E_INVALIDARG;
    const std::u16string wanted = TextCase::Lower(reinterpret_cast<const char16_t*>(names[0]));
    for (size_t i = 0; i < members_.size(); ++i) {
      if (TextCase::Lower(members_[i].first) == wanted) {
        ids[0] = static_cast<DISPID>(i + 1);
        return S_OK;
      }
    }
    ids[0] = DISPID_UNKNOWN;
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params,
                                   VARIANT* result, EXCEPINFO* exception, UINT*) override {
    if (id < 1 || static_cast<size_t>(id) > members_.size()) return DISP_E_MEMBERNOTFOUND;
    FakeCall call;
    call.name = members_[static_cast<size_t>(id - 1)].first;
    call.flags = flags;
    call.exception = exception;
    UINT positional = params->cArgs;
    if (params->cNamedArgs == 1 && params->rgdispidNamedArgs[0] == DISPID_PROPERTYPUT) {
      call.value = &params->rgvarg[0];
    } else if (params->cNamedArgs != 0) {
      return DISP_E_NONAMEDARGS;
    }
    if (call.value != nullptr) --positional;
    for (UINT i = params->cArgs; i-- > params->cArgs - positional;) {
      call.args.push_back(&params->rgvarg[i]);
    }
    VARIANT scratch;
    ::VariantInit(&scratch);
    if (result != nullptr) ::VariantInit(result);
    call.result = result != nullptr ? result : &scratch;
    log.push_back(call.name);
    // The handler may drop the last outside reference (an event handler
    // that ends a subscription); the object stays until it returns.
    AddRef();
    const HRESULT hr = members_[static_cast<size_t>(id - 1)].second(call);
    ::VariantClear(&scratch);
    Release();
    return hr;
  }

 protected:
  ~FakeDispatch() override = default;

 private:
  std::vector<std::pair<std::u16string, Member>> members_;
};

// A FakeDispatch the test owns through a ComPtr<IDispatch>.
inline std::pair<FakeDispatch*, win32::ComPtr<IDispatch>> MakeFake() {
  auto* fake = new FakeDispatch();
  return {fake, win32::ComPtr<IDispatch>::Attach(fake)};
}

inline std::u16string Text(const VARIANT& value) {
  VARIANT copy;
  ::VariantInit(&copy);
  std::u16string text = u"<?>";
  if (SUCCEEDED(::VariantChangeType(&copy, const_cast<VARIANT*>(&value), 0, VT_BSTR))) {
    text.assign(reinterpret_cast<const char16_t*>(V_BSTR(&copy)), ::SysStringLen(V_BSTR(&copy)));
  }
  ::VariantClear(&copy);
  return text;
}

inline BSTR Bstr(const std::u16string& text) {
  return ::SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()),
                             static_cast<UINT>(text.size()));
}

// Fills `exception` the way a failing automation member does.
inline HRESULT Raise(FakeCall& call, SCODE scode, WORD wCode, const std::u16string& description,
                     const std::u16string& source = u"Fake") {
  if (call.exception == nullptr) return scode != 0 ? scode : E_FAIL;
  *call.exception = {};
  call.exception->scode = scode;
  call.exception->wCode = wCode;
  call.exception->bstrDescription = Bstr(description);
  call.exception->bstrSource = Bstr(source);
  return DISP_E_EXCEPTION;
}

// A method's text or Long result, as a fake member hands it back.
inline HRESULT PutText(VARIANT* result, const std::u16string& text) {
  V_VT(result) = VT_BSTR;
  V_BSTR(result) = Bstr(text);
  return S_OK;
}
inline HRESULT PutLong(VARIANT* result, int32_t value) {
  V_VT(result) = VT_I4;
  V_I4(result) = value;
  return S_OK;
}

}  // namespace t4::test
