#include "com/ErrorBoundary.h"

#include <new>
#include <string>

#include "platform/win32/Dispatcher.h"
#include "support/Error.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4::com {

namespace {

// The source of errors that did not arise as a t4::Error.
constexpr char16_t kLibrary[] = u"Tandrel4";

std::wstring Wide(std::u16string_view text) {
  return std::wstring(reinterpret_cast<const wchar_t*>(text.data()), text.size());
}

}  // namespace

HRESULT HResultFromNumber(int32_t number) noexcept {
  if (number >= 0 && number <= 0xFFFF) {
    return static_cast<HRESULT>(0x800A0000u | static_cast<uint32_t>(number));
  }
  if (number < 0) return static_cast<HRESULT>(number);
  return E_UNEXPECTED;
}

void SetComErrorInfo(REFIID iid, std::u16string_view source, std::u16string_view description,
                     std::u16string_view helpFile, int32_t helpContext) noexcept {
  ICreateErrorInfo* create = nullptr;
  if (FAILED(::CreateErrorInfo(&create))) return;
  try {
    // The ICreateErrorInfo setters take zero-terminated strings.
    std::wstring text = Wide(source);
    create->SetSource(text.data());
    text = Wide(description);
    create->SetDescription(text.data());
    text = Wide(helpFile);
    create->SetHelpFile(text.data());
    create->SetHelpContext(static_cast<DWORD>(helpContext));
    create->SetGUID(iid);
    IErrorInfo* info = nullptr;
    if (SUCCEEDED(create->QueryInterface(IID_IErrorInfo, reinterpret_cast<void**>(&info)))) {
      ::SetErrorInfo(0, info);
      info->Release();
    }
  } catch (...) {
    // Out of memory while copying the texts: the HRESULT alone must do.
  }
  create->Release();
}

HRESULT ReportCurrentException(REFIID iid) noexcept {
  try {
    throw;
  } catch (const Error& error) {
    const HRESULT hr = HResultFromNumber(error.Number());
    SetComErrorInfo(iid, error.Source(), error.Description(), error.HelpFile(),
                    error.HelpContext());
    return hr;
  } catch (const std::bad_alloc&) {
    SetComErrorInfo(iid, kLibrary, u"Out of memory");
    return E_OUTOFMEMORY;
  } catch (const std::exception& error) {
    try {
      SetComErrorInfo(iid, kLibrary, u"Unexpected error: " + Utf::FromUtf8(error.what()));
    } catch (...) {
      SetComErrorInfo(iid, kLibrary, u"Unexpected error");
    }
    return E_UNEXPECTED;
  } catch (...) {
    SetComErrorInfo(iid, kLibrary, u"Unexpected error");
    return E_UNEXPECTED;
  }
}

HRESULT NotImplemented(REFIID iid, std::u16string_view member) noexcept {
  return Boundary(iid, [&] { throw RunTimeError::NotImplemented(member); });
}

void ThrowIfFailed(HRESULT hr) {
  if (SUCCEEDED(hr)) return;
  if (hr == E_OUTOFMEMORY) throw std::bad_alloc();
  // The number is the HRESULT; the text the system's when it has one.
  throw Error(static_cast<int32_t>(hr), win32::Dispatcher::SystemText(hr));
}

}  // namespace t4::com
