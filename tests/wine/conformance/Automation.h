#pragma once

#include <oaidl.h>
#include <windows.h>

#include <initializer_list>
#include <string>

namespace t4test {

// A VARIANT that owns its value, for arguments and results of late-bound
// calls.
class Var {
 public:
  Var() noexcept { ::VariantInit(&v_); }
  Var(const Var& other) {
    ::VariantInit(&v_);
    ::VariantCopy(&v_, const_cast<VARIANT*>(&other.v_));
  }
  Var& operator=(const Var& other) {
    if (this != &other) ::VariantCopy(&v_, const_cast<VARIANT*>(&other.v_));
    return *this;
  }
  ~Var() { ::VariantClear(&v_); }

  static Var I4(LONG value);
  static Var I2(SHORT value);
  static Var UI1(BYTE value);
  static Var R4(float value);
  static Var R8(double value);
  static Var Cy(LONGLONG tenThousandths);
  static Var Dec(LONG units, BYTE scale);  // units / 10^scale
  static Var Date(double value);
  static Var Bool(bool value);
  static Var Str(const wchar_t* text);
  static Var Obj(IUnknown* object);  // AddRef'ed copy; null is Nothing
  static Var Empty();
  static Var Null();
  static Var Missing();  // an optional argument left out
  // A script variable passed by reference (VT_BYREF|VT_VARIANT); the target
  // is not owned.
  static Var Ref(VARIANT* target);

  VARIANT* get() noexcept { return &v_; }
  const VARIANT& operator*() const noexcept { return v_; }
  VARTYPE Type() const noexcept { return V_VT(&v_); }
  // Conversions; a value that does not convert gives the fallback.
  LONG Long(LONG fallback = -99999) const;
  double Double() const;
  bool Bool() const;
  std::wstring Text() const;
  // The object (not AddRef'ed), or null.
  IDispatch* Object() const noexcept;
  bool IsNothing() const noexcept { return Type() == VT_DISPATCH && V_DISPATCH(&v_) == nullptr; }

 private:
  VARIANT v_;
};

// The outcome of one IDispatch::Invoke: the HRESULT, the result and, for
// DISP_E_EXCEPTION, what EXCEPINFO said.
struct Result {
  HRESULT hr = S_OK;
  Var value;
  HRESULT scode = S_OK;
  std::wstring description;
  std::wstring source;
  bool Ok() const noexcept { return hr == S_OK; }
  // The error number as a script's Err.Number shows it: EXCEPINFO's scode
  // (0x800A0000|n for Visual Basic run-time error n) or the HRESULT.
  HRESULT Number() const noexcept { return hr == DISP_E_EXCEPTION ? scode : hr; }
};

// Late-bound calls as a script engine makes them: the member is looked up
// by name, arguments are given first to last, methods and property reads
// are invoked with DISPATCH_METHOD | DISPATCH_PROPERTYGET.
Result Call(IDispatch* object, const wchar_t* name, std::initializer_list<Var> args = {});
Result Put(IDispatch* object, const wchar_t* name, const Var& value,
           std::initializer_list<Var> args = {});
Result Invoke(IDispatch* object, DISPID id, WORD flags, std::initializer_list<Var> args);

// The object a call returned, AddRef'ed (null when it returned none).
IDispatch* ObjectOf(const Result& result);

// The text of `text`, which is freed.
std::wstring TakeBstr(BSTR text);

// The IErrorInfo a failing call left behind (taken: the thread has none
// afterwards).
struct ErrorInfoFields {
  bool present = false;
  std::wstring source;
  std::wstring description;
  std::wstring helpFile;
  DWORD helpContext = 0;
  GUID guid = GUID_NULL;
};
ErrorInfoFields TakeErrorInfo();

// An IDispatch that a test makes on the stack and hands to the code under
// test (an event sink, an argument object, a script's named item). `refs`
// counts the references, the test's own being the first, so a test can see
// who holds the object; reaching 0 deletes nothing. It answers
// QueryInterface for IUnknown, IDispatch and `also`, and has no type
// information and no names unless a subclass supplies them. Subclasses
// implement Invoke.
class StackDispatch : public IDispatch {
 public:
  explicit StackDispatch(const IID& also = IID_IDispatch) noexcept : also_(also) {}
  StackDispatch(const StackDispatch&) = delete;
  StackDispatch& operator=(const StackDispatch&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
    if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IDispatch) ||
        IsEqualIID(riid, also_)) {
      AddRef();
      *object = static_cast<IDispatch*>(this);
      return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++refs; }
  ULONG STDMETHODCALLTYPE Release() override { return --refs; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }

  ULONG refs = 1;

 protected:
  ~StackDispatch() = default;

 private:
  IID also_;
};

}  // namespace t4test
