#pragma once

#include <string>

namespace t4::win32 {

// Conversions between the core's UTF-16 strings and the system's ANSI code
// page, for the few calls the library makes through the "A" entry points.
class WinText {
 public:
  static std::string ToAnsi(const std::u16string& text);
  static std::u16string FromAnsi(const std::string& text);
  static const wchar_t* Wide(const std::u16string& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
  }
  static std::u16string FromWide(const wchar_t* text) {
    return text != nullptr ? std::u16string(reinterpret_cast<const char16_t*>(text)) : u"";
  }
};

}  // namespace t4::win32
