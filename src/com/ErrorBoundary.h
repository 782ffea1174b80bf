#pragma once

#include <oaidl.h>
#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace t4::com {

// The HRESULT a COM client sees for a core error number. Visual Basic
// run-time numbers (0..65535) become FACILITY_CONTROL codes 0x800A0000|n,
// which is what Err.Number of a VB client turns back into n; every negative
// number (the library's own codes such as 0xD080222A, E_NOTIMPL, ...) is
// already an HRESULT and passes unchanged. A positive number above 65535
// would read as success, so it becomes E_UNEXPECTED.
HRESULT HResultFromNumber(int32_t number) noexcept;

// Sets the thread's IErrorInfo. Errors while building it are swallowed:
// the HRESULT still reaches the client.
void SetComErrorInfo(REFIID iid, std::u16string_view source, std::u16string_view description,
                     std::u16string_view helpFile = {}, int32_t helpContext = 0) noexcept;

// The one translation of exceptions into HRESULT + IErrorInfo. Only call it
// from inside a catch handler: it rethrows the exception in flight.
//   t4::Error         -> HResultFromNumber(Number()), its source trail,
//                        description, help file and help context
//   std::bad_alloc    -> E_OUTOFMEMORY
//   anything else     -> E_UNEXPECTED, "Unexpected error: <what>"
HRESULT ReportCurrentException(REFIID iid) noexcept;

// Runs `body` at the COM boundary of a method of interface `iid`. `body`
// returns void (success is S_OK) or its own HRESULT.
template <class Body>
HRESULT Boundary(REFIID iid, Body&& body) noexcept {
  try {
    if constexpr (std::is_same_v<std::invoke_result_t<Body>, HRESULT>) {
      return body();
    } else {
      body();
      return S_OK;
    }
  } catch (...) {
    return ReportCurrentException(iid);
  }
}

// A member whose behaviour is not built yet: E_NOTIMPL with the description
// "Not implemented yet: <member>" (member as "Class.Member").
HRESULT NotImplemented(REFIID iid, std::u16string_view member) noexcept;

// Turns a failed HRESULT of a system call inside a body into a core error,
// so that it leaves through the boundary like every other failure.
void ThrowIfFailed(HRESULT hr);

}  // namespace t4::com
