#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace t4 {

namespace hex_detail {

// Digit values of the ASCII characters: -1 for no digit; lower-case letters
// are marked apart (16 + value) so an upper-case-only decode can refuse
// them.
struct DigitTable {
  int8_t value[128];
  constexpr DigitTable() : value() {
    for (int c = 0; c < 128; ++c) {
      value[c] = c >= '0' && c <= '9'   ? static_cast<int8_t>(c - '0')
                 : c >= 'A' && c <= 'F' ? static_cast<int8_t>(c - 'A' + 10)
                 : c >= 'a' && c <= 'f' ? static_cast<int8_t>(16 + c - 'a' + 10)
                                        : -1;
    }
  }
};
inline constexpr DigitTable kDigitValues{};

}  // namespace hex_detail

// Hexadecimal text, read and written in one place: binary data two digits a
// byte (entry identifiers, the registry file's byte lists, identifiers of
// new categories) and single numbers ("&H" literals, a registry dword).
// The per-character helpers are inline: the item reading and the registry
// file's byte lists go through them a million times.
class HexCodec {
 public:
  enum class Letters { kUpper, kLower };

  // Upper-case digits (or lower-case ones), two per byte.
  static std::u16string Encode(std::string_view bytes, Letters letters = Letters::kUpper);
  // Appends the encoding of `bytes` to `out`.
  static void AppendEncoded(std::string_view bytes, std::u16string& out,
                            Letters letters = Letters::kUpper);
  // Writes the two digits of `byte` at `out` and returns the place after
  // them, for writers that fill a buffer they sized themselves.
  static char16_t* PutByte(uint8_t byte, char16_t* out, Letters letters) {
    return Put(byte, out, DigitsOf(letters));
  }
  // The bytes of `hex` (either letter case). False, with `out` unspecified,
  // for an odd length or a character that is no hexadecimal digit.
  static bool Decode(std::u16string_view hex, std::string& out);
  // The same for upper-case digits only, the form Encode writes: true
  // exactly when Encode(out) gives `hex` back.
  static bool DecodeUpper(std::u16string_view hex, std::string& out);

  // The value of digit `c` (0-9, a-f, A-F), or -1 for any other character.
  static int Digit(char16_t c) {
    const int value = c < 128 ? hex_detail::kDigitValues.value[c] : -1;
    return value < 0 ? -1 : (value & 0x0F);
  }

  // The digits at the start of a text read as one number.
  struct Number {
    uint64_t value = 0;     // the number; meaningless after an overflow
    size_t digits = 0;      // how many digits were read; 0: no number
    bool overflow = false;  // past 32 bits (leading zeros do not count)
  };
  // Reads every hexadecimal digit at the start of `text`.
  static Number LeadingNumber(std::u16string_view text);

 private:
  static constexpr char16_t kUpper[] = u"0123456789ABCDEF";
  static constexpr char16_t kLower[] = u"0123456789abcdef";
  static const char16_t* DigitsOf(Letters letters) {
    return letters == Letters::kUpper ? kUpper : kLower;
  }
  static char16_t* Put(uint8_t byte, char16_t* out, const char16_t* digits) {
    out[0] = digits[byte >> 4];
    out[1] = digits[byte & 0x0F];
    return out + 2;
  }
  static bool DecodeWith(std::u16string_view hex, std::string& out, int8_t limit);
};

}  // namespace t4
