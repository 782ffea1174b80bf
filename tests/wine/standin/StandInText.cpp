#include "StandInText.h"

#include <objbase.h>

namespace t4standin {

bool StandInText::EqualNoCase(const std::wstring& a, const std::wstring& b) noexcept {
  return ::CompareStringOrdinal(a.c_str(), static_cast<int>(a.size()), b.c_str(),
                                static_cast<int>(b.size()), TRUE) == CSTR_EQUAL;
}

std::vector<std::wstring> StandInText::Split(const std::wstring& text, wchar_t separator) {
  std::vector<std::wstring> parts;
  if (text.empty()) return parts;
  size_t start = 0;
  for (;;) {
    const size_t end = text.find(separator, start);
    parts.push_back(text.substr(start, end == std::wstring::npos ? end : end - start));
    if (end == std::wstring::npos) break;
    start = end + 1;
  }
  return parts;
}

std::wstring StandInText::Join(const std::vector<std::wstring>& parts, wchar_t separator) {
  std::wstring text;
  for (size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) text += separator;
    text += parts[i];
  }
  return text;
}

std::wstring StandInText::NewGuidText() {
  GUID guid{};
  if (FAILED(::CoCreateGuid(&guid))) return std::wstring();
  wchar_t text[40] = {};
  // StringFromGUID2 already writes upper case hexadecimal digits in braces.
  ::StringFromGUID2(guid, text, 40);
  return text;
}

}  // namespace t4standin
