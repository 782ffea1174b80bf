#pragma once

#include <string>
#include <string_view>

namespace t4 {

// Binary data as hexadecimal text, two digits a byte, the way MAPI writes
// entry identifiers.
class HexCodec {
 public:
  // Upper-case digits, two per byte.
  static std::u16string Encode(std::string_view bytes);
  // Appends the encoding of `bytes` to `out`.
  static void AppendEncoded(std::string_view bytes, std::u16string& out);
  // The bytes of `hex` (either letter case). False, with `out` unspecified,
  // for an odd length or a character that is no hexadecimal digit.
  static bool Decode(std::u16string_view hex, std::string& out);
  // The same for upper-case digits only, the form Encode writes: true
  // exactly when Encode(out) gives `hex` back.
  static bool DecodeUpper(std::u16string_view hex, std::string& out);
};

}  // namespace t4
