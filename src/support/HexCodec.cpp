#include "support/HexCodec.h"

namespace t4 {

namespace {

constexpr char16_t kDigits[] = u"0123456789ABCDEF";

int DigitValue(char16_t c) {
  if (c >= u'0' && c <= u'9') return c - u'0';
  if (c >= u'A' && c <= u'F') return c - u'A' + 10;
  if (c >= u'a' && c <= u'f') return c - u'a' + 10;
  return -1;
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
  if (hex.size() % 2 != 0) return false;
  out.resize(hex.size() / 2);
  for (size_t i = 0; i < out.size(); ++i) {
    const int high = DigitValue(hex[2 * i]);
    const int low = DigitValue(hex[2 * i + 1]);
    if (high < 0 || low < 0) return false;
    out[i] = static_cast<char>(high << 4 | low);
  }
  return true;
}

}  // namespace t4
