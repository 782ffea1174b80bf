#include "support/Utf.h"

namespace t4 {

namespace {

void AppendUtf8(std::string& out, char32_t cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

void AppendUtf16(std::u16string& out, char32_t cp) {
  if (cp < 0x10000) {
    out += static_cast<char16_t>(cp);
  } else {
    cp -= 0x10000;
    out += static_cast<char16_t>(0xD800 + (cp >> 10));
    out += static_cast<char16_t>(0xDC00 + (cp & 0x3FF));
  }
}

}  // namespace

std::string Utf::ToUtf8(std::u16string_view text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    // A run of ASCII is narrowed in one step.
    size_t run = i;
    while (run < text.size() && text[run] < 0x80) ++run;
    if (run > i) {
      const size_t used = out.size();
      out.resize(used + (run - i));
      for (size_t k = i; k < run; ++k) out[used + (k - i)] = static_cast<char>(text[k]);
      i = run;
      if (i == text.size()) break;
    }
    char32_t c = text[i];
    if (c >= 0xD800 && c <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
        text[i + 1] <= 0xDFFF) {
      c = 0x10000 + ((c - 0xD800) << 10) + (text[i + 1] - 0xDC00);
      ++i;
    } else if (c >= 0xD800 && c <= 0xDFFF) {
      c = 0xFFFD;
    }
    AppendUtf8(out, c);
  }
  return out;
}

std::u16string Utf::FromUtf8(std::string_view text) {
  std::u16string out;
  out.reserve(text.size());
  size_t i = 0;
  while (i < text.size()) {
    // Most text read from headers and files is ASCII: a run of it is
    // widened without the decoding below.
    size_t run = i;
    while (run < text.size() && static_cast<unsigned char>(text[run]) < 0x80) ++run;
    if (run > i) {
      out.append(text.begin() + static_cast<std::ptrdiff_t>(i),
                 text.begin() + static_cast<std::ptrdiff_t>(run));
      i = run;
      if (i == text.size()) break;
    }
    const auto b = static_cast<unsigned char>(text[i]);
    size_t len = b < 0x80 ? 1 : (b >> 5) == 6 ? 2 : (b >> 4) == 14 ? 3 : (b >> 3) == 30 ? 4 : 0;
    char32_t cp = len == 1 ? b : len == 2 ? (b & 0x1F) : len == 3 ? (b & 0x0F) : (b & 0x07);
    bool ok = len != 0 && i + len <= text.size();
    for (size_t k = 1; ok && k < len; ++k) {
      const auto c = static_cast<unsigned char>(text[i + k]);
      ok = (c & 0xC0) == 0x80;
      cp = (cp << 6) | (c & 0x3F);
    }
    // Reject overlong forms, surrogates and values beyond Unicode.
    if (ok && ((len == 2 && cp < 0x80) || (len == 3 && cp < 0x800) || (len == 4 && cp < 0x10000) ||
               (cp >= 0xD800 && cp <= 0xDFFF) || cp > 0x10FFFF)) {
      ok = false;
    }
    if (!ok) {
      out += u'\uFFFD';
      ++i;
      continue;
    }
    AppendUtf16(out, cp);
    i += len;
  }
  return out;
}

std::u16string Utf::Decimal(int64_t value) {
  const std::string s = std::to_string(value);
  return std::u16string(s.begin(), s.end());
}

}  // namespace t4
