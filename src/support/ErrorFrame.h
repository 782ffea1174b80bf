#pragma once

#include <string_view>
#include <utility>

namespace t4 {

// Called from inside a catch block: takes over the error in flight, appends
// "; Tandrel4.<cls>.<proc> (<line>)" to its source and throws it on as a
// t4::Error. Errors that are not t4::Error become the matching run-time
// error first (std::bad_alloc: out of memory; anything else: internal error).
[[noreturn]] void RethrowWithLabel(std::u16string_view cls, std::u16string_view proc, int line);

// The procedure frame. Every procedure that can fail wraps its body in one
// line:
//
//   return Frame(u"Category", u"Name", [&] { ... });
//
// An error leaving the body keeps its number and description and gains this
// procedure's label. Clean-up belongs in objects the body owns (or in its
// own try/catch): their destructors run during unwinding, before the error
// leaves the frame.
//
// The names are taken as they come (literals, mostly) and only measured
// when an error passes: a frame around an operation that runs a million
// times costs no more than its try block.
template <class Cls, class Proc, class Body>
decltype(auto) Frame(const Cls& cls, const Proc& proc, Body&& body) {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    RethrowWithLabel(std::u16string_view(cls), std::u16string_view(proc), 0);
  }
}

// The same with the source line number of the failing statement, for the
// few procedures that number their lines.
template <class Cls, class Proc, class Body>
decltype(auto) Frame(const Cls& cls, const Proc& proc, int line, Body&& body) {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    RethrowWithLabel(std::u16string_view(cls), std::u16string_view(proc), line);
  }
}

}  // namespace t4
