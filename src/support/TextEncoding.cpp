#include "support/TextEncoding.h"

#include <cstdint>

#include "support/Utf.h"

namespace t4 {

namespace {

bool StartsWith(std::string_view bytes, std::string_view prefix) {
  return bytes.substr(0, prefix.size()) == prefix;
}

constexpr char16_t kReplacement = u'\uFFFD';

// Windows-1252 from 0x80 to 0x9F; the five bytes the code page leaves
// undefined map to the control character of the same number, as Windows'
// own conversion does.
constexpr char16_t kHigh1252[32] = {
    u'\u20AC', u'\u0081', u'\u201A', u'\u0192', u'\u201E', u'\u2026', u'\u2020', u'\u2021',
    u'\u02C6', u'\u2030', u'\u0160', u'\u2039', u'\u0152', u'\u008D', u'\u017D', u'\u008F',
    u'\u0090', u'\u2018', u'\u2019', u'\u201C', u'\u201D', u'\u2022', u'\u2013', u'\u2014',
    u'\u02DC', u'\u2122', u'\u0161', u'\u203A', u'\u0153', u'\u009D', u'\u017E', u'\u0178'};

}  // namespace

bool TextEncoding::IsValidUtf8(std::string_view bytes) {
  const auto* p = reinterpret_cast<const uint8_t*>(bytes.data());
  const size_t n = bytes.size();
  size_t i = 0;
  while (i < n) {
    const uint8_t b = p[i];
    if (b < 0x80) {
      ++i;
      continue;
    }
    size_t length;
    uint8_t low = 0x80;
    uint8_t high = 0xBF;
    if (b >= 0xC2 && b <= 0xDF) {
      length = 2;
    } else if (b >= 0xE0 && b <= 0xEF) {
      length = 3;
      if (b == 0xE0) low = 0xA0;   // overlong
      if (b == 0xED) high = 0x9F;  // surrogates
    } else if (b >= 0xF0 && b <= 0xF4) {
      length = 4;
      if (b == 0xF0) low = 0x90;   // overlong
      if (b == 0xF4) high = 0x8F;  // above U+10FFFF
    } else {
      return false;
    }
    if (n - i < length) return false;
    if (p[i + 1] < low || p[i + 1] > high) return false;
    for (size_t k = 2; k < length; ++k) {
      if (p[i + k] < 0x80 || p[i + k] > 0xBF) return false;
    }
    i += length;
  }
  return true;
}

TextEncoding::Kind TextEncoding::Detect(std::string_view bytes) {
  if (StartsWith(bytes, "\xEF\xBB\xBF")) return Kind::kUtf8Bom;
  if (StartsWith(bytes, "\xFF\xFE")) return Kind::kUtf16Le;
  if (StartsWith(bytes, "\xFE\xFF")) return Kind::kUtf16Be;
  return IsValidUtf8(bytes) ? Kind::kUtf8 : Kind::kWindows1252;
}

std::u16string TextEncoding::FromWindows1252(std::string_view bytes) {
  std::u16string text;
  text.reserve(bytes.size());
  for (const char c : bytes) {
    const auto b = static_cast<uint8_t>(c);
    text.push_back(b >= 0x80 && b <= 0x9F ? kHigh1252[b - 0x80] : static_cast<char16_t>(b));
  }
  return text;
}

std::u16string TextEncoding::FromUtf16(std::string_view bytes, bool bigEndian) {
  std::u16string text;
  const size_t units = bytes.size() / 2;
  text.reserve(units + 1);
  const auto* p = reinterpret_cast<const uint8_t*>(bytes.data());
  const auto unit = [&](size_t k) {
    const uint8_t a = p[2 * k];
    const uint8_t b = p[2 * k + 1];
    return static_cast<char16_t>(bigEndian ? (a << 8) | b : (b << 8) | a);
  };
  for (size_t k = 0; k < units; ++k) {
    const char16_t u = unit(k);
    if (u >= 0xD800 && u <= 0xDBFF) {
      if (k + 1 < units) {
        const char16_t next = unit(k + 1);
        if (next >= 0xDC00 && next <= 0xDFFF) {
          text.push_back(u);
          text.push_back(next);
          ++k;
          continue;
        }
      }
      text.push_back(kReplacement);
    } else if (u >= 0xDC00 && u <= 0xDFFF) {
      text.push_back(kReplacement);
    } else {
      text.push_back(u);
    }
  }
  if (bytes.size() % 2 != 0) text.push_back(kReplacement);
  return text;
}

std::u16string TextEncoding::Decode(std::string_view bytes) {
  switch (Detect(bytes)) {
    case Kind::kUtf8Bom:
      return Utf::FromUtf8(bytes.substr(3));
    case Kind::kUtf16Le:
      return FromUtf16(bytes.substr(2), false);
    case Kind::kUtf16Be:
      return FromUtf16(bytes.substr(2), true);
    case Kind::kUtf8:
      return Utf::FromUtf8(bytes);
    case Kind::kWindows1252:
      break;
  }
  return FromWindows1252(bytes);
}

std::string TextEncoding::Encode(std::u16string_view text) {
  return "\xEF\xBB\xBF" + Utf::ToUtf8(text);
}

}  // namespace t4
