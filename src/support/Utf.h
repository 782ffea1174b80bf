#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace t4 {

// Conversions between the core's UTF-16 strings and the UTF-8 (or 8-bit)
// strings of files, environment variables and POSIX paths.
class Utf {
 public:
  // UTF-16 to UTF-8; an unpaired surrogate becomes U+FFFD.
  static std::string ToUtf8(std::u16string_view text);
  // UTF-8 to UTF-16; an invalid byte sequence becomes U+FFFD per byte.
  static std::u16string FromUtf8(std::string_view text);
  // Decimal text of a number, as CStr gives it.
  static std::u16string Decimal(int64_t value);
};

}  // namespace t4
