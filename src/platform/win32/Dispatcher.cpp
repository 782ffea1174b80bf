#include "platform/win32/Dispatcher.h"

#include <dispex.h>

#include <new>
#include <string>
#include <vector>

#include "support/Error.h"
#include "support/RunTimeError.h"

namespace t4::win32 {

namespace {

// Releases the strings of an EXCEPINFO the callee filled in.
class ExceptionInfo {
 public:
  ExceptionInfo() noexcept { info_ = {}; }
  ~ExceptionInfo() {
    ::SysFreeString(info_.bstrSource);
    ::SysFreeString(info_.bstrDescription);
    ::SysFreeString(info_.bstrHelpFile);
  }
  ExceptionInfo(const ExceptionInfo&) = delete;
  ExceptionInfo& operator=(const ExceptionInfo&) = delete;
  EXCEPINFO* get() noexcept { return &info_; }

 private:
  EXCEPINFO info_;
};

[[noreturn]] void FailWithException(EXCEPINFO& info) {
  // A callee may defer the texts until someone asks for them.
  if (info.pfnDeferredFillIn != nullptr) info.pfnDeferredFillIn(&info);
  int32_t number = 0;
  if (info.scode != 0) {
    number = Dispatcher::NumberOf(info.scode);
  } else {
    number = info.wCode;
  }
  if (number == 0) number = Dispatcher::NumberOf(E_FAIL);
  std::u16string description = FromBstr(info.bstrDescription);
  if (description.empty()) description = RunTimeError::Text(number);
  std::u16string source = FromBstr(info.bstrSource);
  if (source.empty()) source = u"Tandrel4";
  throw Error(number, std::move(description), std::move(source), FromBstr(info.bstrHelpFile),
              static_cast<int32_t>(info.dwHelpContext));
}

[[noreturn]] void FailWith(HRESULT hr) {
  if (hr == E_OUTOFMEMORY) throw std::bad_alloc();
  const int32_t number = Dispatcher::NumberOf(hr);
  if (number > 0 && number <= 0xFFFF) throw RunTimeError::Make(number);
  // No VB number: keep the system's text when it has one.
  throw Error(number, Dispatcher::SystemText(hr));
}

}  // namespace

std::u16string Dispatcher::SystemText(HRESULT hr) {
  wchar_t* buffer = nullptr;
  const DWORD n = ::FormatMessageW(
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
      nullptr, static_cast<DWORD>(hr), 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
  std::u16string text;
  if (n > 0 && buffer != nullptr) {
    text.assign(reinterpret_cast<const char16_t*>(buffer), n);
    while (!text.empty() && (text.back() == u'\r' || text.back() == u'\n' || text.back() == u' ')) {
      text.pop_back();
    }
  }
  if (buffer != nullptr) ::LocalFree(buffer);
  if (text.empty()) text = RunTimeError::Text(RunTimeError::kAutomationError);
  return text;
}

int32_t Dispatcher::NumberOf(HRESULT hr) noexcept {
  const auto code = static_cast<uint32_t>(hr);
  if ((code & 0xFFFF0000u) == 0x800A0000u) return static_cast<int32_t>(code & 0xFFFFu);
  return static_cast<int32_t>(code);
}

Variant Dispatcher::Invoke(std::u16string_view name, WORD flags, std::span<Variant> args,
                           const VARIANT* putValue) const {
  if (!object_) throw RunTimeError::Make(RunTimeError::kObjectVariableNotSet);
  DISPID id = DISPID_UNKNOWN;
  HRESULT hr = IdOf(name, id);
  if (hr == DISP_E_UNKNOWNNAME || hr == DISP_E_MEMBERNOTFOUND) {
    throw RunTimeError::Make(RunTimeError::kObjectDoesntSupportMember);
  }
  if (FAILED(hr)) FailWith(hr);

  // DISPPARAMS lists the arguments last to first. The copies are shallow:
  // the Variants keep owning their values, and a by-reference argument's
  // pointer still leads to its slot.
  std::vector<VARIANT> reversed;
  reversed.reserve(args.size() + 1);
  if (putValue != nullptr) reversed.push_back(*putValue);
  for (size_t i = args.size(); i-- > 0;) reversed.push_back(args[i].Raw());
  DISPID putId = DISPID_PROPERTYPUT;
  DISPPARAMS params = {};
  params.rgvarg = reversed.empty() ? nullptr : reversed.data();
  params.cArgs = static_cast<UINT>(reversed.size());
  if (putValue != nullptr) {
    params.rgdispidNamedArgs = &putId;
    params.cNamedArgs = 1;
  }

  Variant result;
  ExceptionInfo info;
  UINT argError = 0;
  hr = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params,
                       putValue != nullptr ? nullptr : result.Out(), info.get(), &argError);
  if (hr == DISP_E_EXCEPTION) FailWithException(*info.get());
  if (hr == DISP_E_UNKNOWNNAME || hr == DISP_E_MEMBERNOTFOUND) {
    throw RunTimeError::Make(RunTimeError::kObjectDoesntSupportMember);
  }
  if (hr == DISP_E_TYPEMISMATCH) throw RunTimeError::Make(RunTimeError::kTypeMismatch);
  if (hr == DISP_E_BADPARAMCOUNT) throw RunTimeError::Make(RunTimeError::kWrongNumberOfArguments);
  if (hr == DISP_E_PARAMNOTOPTIONAL) throw RunTimeError::Make(RunTimeError::kArgumentNotOptional);
  if (hr == DISP_E_OVERFLOW) throw RunTimeError::Make(RunTimeError::kOverflow);
  if (FAILED(hr)) FailWith(hr);
  return result;
}

Variant Dispatcher::Call(std::u16string_view name, std::span<Variant> args) const {
  return Invoke(name, DISPATCH_METHOD, args, nullptr);
}

Variant Dispatcher::Get(std::u16string_view name, std::span<Variant> args) const {
  // Both flags, as VB passes them for a value read: collections such as
  // Outlook's declare Item as a method, and type-library dispatch rejects a
  // method invoked as property get alone.
  return Invoke(name, DISPATCH_PROPERTYGET | DISPATCH_METHOD, args, nullptr);
}

Variant Dispatcher::GetProperty(std::u16string_view name) const {
  return Invoke(name, DISPATCH_PROPERTYGET, {}, nullptr);
}

void Dispatcher::Put(std::u16string_view name, Variant value, std::span<Variant> args) const {
  Invoke(name, DISPATCH_PROPERTYPUT, args, &value.Raw());
}

void Dispatcher::PutRef(std::u16string_view name, Variant value, std::span<Variant> args) const {
  Invoke(name, DISPATCH_PROPERTYPUTREF, args, &value.Raw());
}

bool Dispatcher::Has(std::u16string_view name) const {
  if (!object_) return false;
  DISPID id = DISPID_UNKNOWN;
  return SUCCEEDED(IdOf(name, id));
}

HRESULT Dispatcher::IdOf(std::u16string_view name, DISPID& id) const {
  std::wstring wide(reinterpret_cast<const wchar_t*>(name.data()), name.size());
  LPOLESTR names[] = {wide.data()};
  id = DISPID_UNKNOWN;
  HRESULT hr = object_->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
  if (hr != E_NOTIMPL) return hr;
  // Some script objects (Wine's VBScript class instances) answer names only
  // through IDispatchEx, as script engines ask them.
  IDispatchEx* ex = nullptr;
  if (FAILED(object_->QueryInterface(__uuidof(IDispatchEx), reinterpret_cast<void**>(&ex))) ||
      ex == nullptr) {
    return hr;
  }
  BSTR text = ::SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  hr = text != nullptr ? ex->GetDispID(text, fdexNameCaseInsensitive, &id) : E_OUTOFMEMORY;
  ::SysFreeString(text);
  ex->Release();
  return hr;
}

Dispatcher Dispatcher::GetObject(std::u16string_view name, std::span<Variant> args) const {
  return Dispatcher(Get(name, args).ToObject());
}

}  // namespace t4::win32
