#include "Terminal.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "support/Utf.h"

namespace t4::cli {

Terminal Terminal::Detect(std::FILE* out) {
  Terminal t;
  const char* term = std::getenv("TERM");
  const char* noColor = std::getenv("NO_COLOR");
  t.colors_ = ::isatty(::fileno(out)) && term != nullptr && std::strcmp(term, "dumb") != 0 &&
              (noColor == nullptr || *noColor == '\0');
  const char* colorTerm = std::getenv("COLORTERM");
  t.trueColor_ = colorTerm != nullptr &&
                 (std::strcmp(colorTerm, "truecolor") == 0 || std::strcmp(colorTerm, "24bit") == 0);
  return t;
}

std::string Terminal::Swatch(unsigned r, unsigned g, unsigned b) const {
  if (!colors_) return {};
  if (trueColor_) return fmt::format("\x1b[48;2;{};{};{}m  \x1b[0m", r, g, b);
  // The 6x6x6 cube of the 256-colour palette.
  const auto level = [](unsigned v) { return v < 48 ? 0u : v < 115 ? 1u : (v - 35) / 40; };
  const unsigned index = 16 + 36 * level(r) + 6 * level(g) + level(b);
  return fmt::format("\x1b[48;5;{}m  \x1b[0m", index);
}

size_t Terminal::Width(const std::string& utf8) {
  const std::u16string text = Utf::FromUtf8(utf8);
  size_t width = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    char32_t cp = text[i];
    if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < text.size()) {
      cp = 0x10000 + ((cp - 0xD800) << 10) + (text[++i] - 0xDC00);
    }
    // Hangul, CJK, full-width forms and most emoji take two columns.
    const bool wide = (cp >= 0x1100 && cp <= 0x115F) || (cp >= 0x2E80 && cp <= 0xA4CF) ||
                      (cp >= 0xAC00 && cp <= 0xD7A3) || (cp >= 0xF900 && cp <= 0xFAFF) ||
                      (cp >= 0xFF00 && cp <= 0xFF60) || (cp >= 0x1F300 && cp <= 0x1FAFF) ||
                      (cp >= 0x20000 && cp <= 0x3FFFD);
    width += wide ? 2 : 1;
  }
  return width;
}

std::string Terminal::Pad(const std::string& utf8, size_t width) {
  const size_t used = Width(utf8);
  return used >= width ? utf8 : utf8 + std::string(width - used, ' ');
}

}  // namespace t4::cli
