#include "support/NumberText.h"

#include <cmath>
#include <cstdlib>
#include <string>

#include "support/HexCodec.h"
#include "support/RunTimeError.h"

namespace t4 {

namespace {

bool IsSkipped(char16_t c) {
  return c == u' ' || c == u'\t' || c == u'\n';
}
bool IsDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

// "&H...": up to four hex digits are a 16-bit value, longer ones 32-bit,
// both signed, so "&HFFFF" is -1 and "&H10000" is 65536.
double HexNumber(std::u16string_view digits) {
  const HexCodec::Number number = HexCodec::LeadingNumber(digits);
  if (number.overflow) throw RunTimeError::Make(RunTimeError::kOverflow);
  const auto value = static_cast<uint32_t>(number.value);
  if (number.digits <= 4) return static_cast<int16_t>(static_cast<uint16_t>(value));
  return static_cast<int32_t>(value);
}

// "&O...": values up to &O177777 are 16-bit, larger ones 32-bit, both
// signed.
double OctalNumber(std::u16string_view digits) {
  uint64_t value = 0;
  for (const char16_t c : digits) {
    if (c < u'0' || c > u'7') break;
    value = value * 8 + static_cast<uint64_t>(c - u'0');
    if (value > 0xFFFFFFFFull) throw RunTimeError::Make(RunTimeError::kOverflow);
  }
  if (value <= 0xFFFF) return static_cast<int16_t>(static_cast<uint16_t>(value));
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
    if (s[1] == u'H' || s[1] == u'h') return HexNumber(std::u16string_view(s).substr(2));
    if (s[1] == u'O' || s[1] == u'o') return OctalNumber(std::u16string_view(s).substr(2));
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
