// The UTF conversions: any bytes become UTF-16 and back into valid UTF-8,
// and valid UTF-8 survives the round trip unchanged.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "support/Utf.h"

namespace {

// True when `s` is well-formed UTF-8 (no surrogates, no overlong forms).
bool WellFormed(std::string_view s) {
  size_t i = 0;
  while (i < s.size()) {
    const auto c = static_cast<unsigned char>(s[i]);
    size_t n = 0;
    uint32_t cp = 0;
    if (c < 0x80) {
      ++i;
      continue;
    } else if (c >= 0xC2 && c <= 0xDF) {
      n = 1;
      cp = c & 0x1F;
    } else if (c >= 0xE0 && c <= 0xEF) {
      n = 2;
      cp = c & 0x0F;
    } else if (c >= 0xF0 && c <= 0xF4) {
      n = 3;
      cp = c & 0x07;
    } else {
      return false;
    }
    for (size_t k = 1; k <= n; ++k) {
      if (i + k >= s.size()) return false;
      const auto d = static_cast<unsigned char>(s[i + k]);
      if ((d & 0xC0) != 0x80) return false;
      cp = cp << 6 | (d & 0x3F);
    }
    if ((n == 2 && cp < 0x800) || (n == 3 && (cp < 0x10000 || cp > 0x10FFFF)) ||
        (cp >= 0xD800 && cp <= 0xDFFF)) {
      return false;
    }
    i += n + 1;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::u16string wide = t4::Utf::FromUtf8(bytes);
  const std::string narrow = t4::Utf::ToUtf8(wide);
  if (!WellFormed(narrow)) std::abort();
  if (WellFormed(bytes) && narrow != bytes) std::abort();
  // The same bytes taken as UTF-16 code units, unpaired surrogates included.
  std::u16string units(size / 2, u'\0');
  for (size_t i = 0; i + 1 < size; i += 2) {
    units[i / 2] = static_cast<char16_t>(data[i] | data[i + 1] << 8);
  }
  if (!WellFormed(t4::Utf::ToUtf8(units))) std::abort();
  return 0;
}
