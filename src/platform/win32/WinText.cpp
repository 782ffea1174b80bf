#include "platform/win32/WinText.h"

#include <windows.h>

namespace t4::win32 {

std::string WinText::ToAnsi(const std::u16string& text) {
  if (text.empty()) return {};
  const int n = ::WideCharToMultiByte(CP_ACP, 0, Wide(text), static_cast<int>(text.size()), nullptr,
                                      0, nullptr, nullptr);
  std::string out(static_cast<size_t>(n), '\0');
  ::WideCharToMultiByte(CP_ACP, 0, Wide(text), static_cast<int>(text.size()), out.data(), n,
                        nullptr, nullptr);
  return out;
}

std::u16string WinText::FromAnsi(const std::string& text) {
  if (text.empty()) return {};
  const int n =
      ::MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
  std::u16string out(static_cast<size_t>(n), u'\0');
  ::MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()),
                        reinterpret_cast<wchar_t*>(out.data()), n);
  return out;
}

}  // namespace t4::win32
