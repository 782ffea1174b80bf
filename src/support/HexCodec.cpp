#include "support/HexCodec.h"

namespace t4 {

namespace {

constexpr char16_t kDigits[] = u"0123456789ABCDEF";

// Digit values of the ASCII characters: -1 for no digit; lower-case
// letters are marked apart (16 + value) so an upper-case-only decode can
// refuse them.
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
constexpr DigitTable kValues;

bool DecodeWith(std::u16string_view hex, std::string& out, int8_t limit) {
  if (hex.size() % 2 != 0) return false;
  out.resize(hex.size() / 2);
  for (size_t i = 0; i < out.size(); ++i) {
    const char16_t h = hex[2 * i];
    const char16_t l = hex[2 * i + 1];
    if (h >= 128 || l >= 128) return false;
    const int8_t high = kValues.value[h];
    const int8_t low = kValues.value[l];
    if (high < 0 || low < 0 || high >= limit || low >= limit) return false;
    out[i] = static_cast<char>((high & 15) << 4 | (low & 15));
  }
  return true;
}

}  // namespace

std::u16string HexCodec::Encode(std::string_view bytes) {
  std::u16string out;
  AppendEncoded(bytes, out);
  return out;
}

void HexCodec::AppendEncoded(std::string_view bytes, std::u16string& out) {
  const size_t at = out.size();
  out.resize(at + bytes.size() * 2);
  char16_t* p = out.data() + at;
  for (const char c : bytes) {
    const auto b = static_cast<unsigned char>(c);
    *p++ = kDigits[b >> 4];
    *p++ = kDigits[b & 0x0F];
  }
}

bool HexCodec::Decode(std::u16string_view hex, std::string& out) {
  return DecodeWith(hex, out, 32);
}

bool HexCodec::DecodeUpper(std::u16string_view hex, std::string& out) {
  return DecodeWith(hex, out, 16);
}

}  // namespace t4
