#include "support/NumberText.h"

#include <cmath>
#include <cstdlib>
#include <string>

#include "support/RunTimeError.h"

namespace t4 {

namespace {

bool IsSkipped(char16_t c) {
  return c == u' ' || c == u'\t' || c == u'\n';
}
bool IsDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

int HexValue(char16_t c) {
  if (c >= u'0' && c <= u'9') return c - u'0';
  if (c >= u'a' && c <= u'f') return c - u'a' + 10;
  if (c >= u'A' && c <= u'F') return c - u'A' + 10;
  return -1;
}

// "&H..." / "&O...": up to four hex digits (six octal) are a 16-bit value,
// longer ones 32-bit, both signed, as the run time reads such literals.
double RadixNumber(const std::u16string& s, size_t pos, int radix) {
  uint64_t value = 0;
  int digits = 0;
  for (; pos < s.size(); ++pos) {
    const int d = HexValue(s[pos]);
    if (d < 0 || d >= radix) break;
    value = value * radix + d;
    ++digits;
    if (value > 0xFFFFFFFFull) throw RunTimeError::Make(RunTimeError::kOverflow);
  }
  const bool small = radix == 16 ? digits <= 4 : value <= 0xFFFF;
  if (small) return static_cast<int16_t>(static_cast<uint16_t>(value));
  return static_cast<int32_t>(static_cast<uint32_t>(value));
}

}  // namespace

double NumberText::Leading(std::u16string_view text) {
  std::u16string s;
  s.reserve(text.size());
  for (char16_t c : text) {
    if (!IsSkipped(c)) s += c;
  }
  if (s.size() >= 2 && s[0] == u'&') {
    if (s[1] == u'H' || s[1] == u'h') return RadixNumber(s, 2, 16);
    if (s[1] == u'O' || s[1] == u'o') return RadixNumber(s, 2, 8);
    return 0;
  }
  std::string ascii;
  size_t i = 0;
  if (i < s.size() && (s[i] == u'+' || s[i] == u'-')) ascii += static_cast<char>(s[i++]);
  bool any = false;
  while (i < s.size() && IsDigit(s[i])) ascii += static_cast<char>(s[i++]), any = true;
  if (i < s.size() && s[i] == u'.') {
    ascii += '.';
    ++i;
    while (i < s.size() && IsDigit(s[i])) ascii += static_cast<char>(s[i++]), any = true;
  }
  if (!any) return 0;
  if (i < s.size() && (s[i] == u'E' || s[i] == u'e' || s[i] == u'D' || s[i] == u'd')) {
    size_t j = i + 1;
    std::string exp = "e";
    if (j < s.size() && (s[j] == u'+' || s[j] == u'-')) exp += static_cast<char>(s[j++]);
    bool expDigits = false;
    while (j < s.size() && IsDigit(s[j])) exp += static_cast<char>(s[j++]), expDigits = true;
    if (expDigits) ascii += exp;
  }
  const double value = std::strtod(ascii.c_str(), nullptr);
  if (std::isinf(value)) throw RunTimeError::Make(RunTimeError::kOverflow);
  return value;
}

double NumberText::RoundHalfEven(double value) noexcept {
  // Worked out from the floor, so that the rounding mode in force plays no
  // part.
  const double floor = std::floor(value);
  const double rest = value - floor;
  if (rest > 0.5 || (rest == 0.5 && std::fmod(floor, 2.0) != 0.0)) return floor + 1.0;
  return floor;
}

int32_t NumberText::RoundToLong(double value) {
  const double rounded = RoundHalfEven(value);
  if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0)) {
    throw RunTimeError::Make(RunTimeError::kOverflow);
  }
  return static_cast<int32_t>(rounded);
}

int32_t NumberText::LeadingLong(std::u16string_view text) {
  return RoundToLong(Leading(text));
}

}  // namespace t4
