#pragma once

#include <cstdint>
#include <string_view>

namespace t4 {

// Numbers read from the start of a text, the way the library's settings and
// file parsers read them.
class NumberText {
 public:
  // The number at the start of `text`: blanks, tabs and line feeds are
  // skipped anywhere; an optional sign, digits, a "." with digits and an
  // exponent (E or D) are read until the first other character; "&H" and
  // "&O" read hexadecimal and octal whole numbers. No number gives 0.
  static double Leading(std::u16string_view text);
  // `value` rounded to the nearest whole number, a half to the even
  // neighbour (2.5 -> 2, 3.5 -> 4, -2.5 -> -2), as VariantChangeType and
  // Visual Basic's CLng round; independent of the floating-point rounding
  // mode in force. NaN and the infinities come back as they are.
  static double RoundHalfEven(double value) noexcept;
  // `value` rounded half to even to a 32-bit integer; throws the overflow
  // error when it does not fit.
  static int32_t RoundToLong(double value);
  // Both: "abc" 0, "150.5" 150, "2.5" 2, "3.5" 4, "12abc" 12.
  static int32_t LeadingLong(std::u16string_view text);
};

}  // namespace t4
