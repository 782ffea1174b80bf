#include "support/HexCodec.h"

namespace t4 {

bool HexCodec::DecodeWith(std::u16string_view hex, std::string& out, int8_t limit) {
  if (hex.size() % 2 != 0) return false;
  out.resize(hex.size() / 2);
  for (size_t i = 0; i < out.size(); ++i) {
    const char16_t h = hex[2 * i];
    const char16_t l = hex[2 * i + 1];
    if (h >= 128 || l >= 128) return false;
    const int8_t high = hex_detail::kDigitValues.value[h];
    const int8_t low = hex_detail::kDigitValues.value[l];
    if (high < 0 || low < 0 || high >= limit || low >= limit) return false;
    out[i] = static_cast<char>((high & 15) << 4 | (low & 15));
  }
  return true;
}

std::u16string HexCodec::Encode(std::string_view bytes, Letters letters) {
  std::u16string out;
  AppendEncoded(bytes, out, letters);
  return out;
}

void HexCodec::AppendEncoded(std::string_view bytes, std::u16string& out, Letters letters) {
  const size_t at = out.size();
  out.resize(at + bytes.size() * 2);
  char16_t* p = out.data() + at;
  const char16_t* digits = DigitsOf(letters);
  for (const char c : bytes) p = Put(static_cast<uint8_t>(c), p, digits);
}

bool HexCodec::Decode(std::u16string_view hex, std::string& out) {
  return DecodeWith(hex, out, 32);
}

bool HexCodec::DecodeUpper(std::u16string_view hex, std::string& out) {
  return DecodeWith(hex, out, 16);
}

HexCodec::Number HexCodec::LeadingNumber(std::u16string_view text) {
  Number number;
  for (const char16_t c : text) {
    const int digit = Digit(c);
    if (digit < 0) break;
    ++number.digits;
    if (number.overflow) continue;
    number.value = number.value * 16 + static_cast<uint64_t>(digit);
    if (number.value > 0xFFFFFFFFull) number.overflow = true;
  }
  return number;
}

}  // namespace t4
