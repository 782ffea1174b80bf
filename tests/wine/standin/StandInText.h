#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace t4standin {

// Small text helpers shared by the objects of the stand-in.
class StandInText {
 public:
  // Outlook compares category and rule names without regard to letter case.
  static bool EqualNoCase(const std::wstring& a, const std::wstring& b) noexcept;
  // "a;b;c" -> {"a", "b", "c"}; "" -> {}.
  static std::vector<std::wstring> Split(const std::wstring& text, wchar_t separator);
  static std::wstring Join(const std::vector<std::wstring>& parts, wchar_t separator);
  // A fresh GUID as Outlook writes a CategoryID: upper case, in braces.
  static std::wstring NewGuidText();
  static std::wstring BoolText(bool value) { return value ? L"True" : L"False"; }
};

}  // namespace t4standin
