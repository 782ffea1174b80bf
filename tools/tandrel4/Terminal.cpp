#include "Terminal.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

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
  size_t width = 0;
  for (size_t i = 0; i < utf8.size();) {
    const auto b = static_cast<unsigned char>(utf8[i]);
    const size_t len = b < 0x80         ? 1
                       : (b >> 5) == 6  ? 2
                       : (b >> 4) == 14 ? 3
                       : (b >> 3) == 30 ? 4
                                        : 1;
    char32_t cp = len == 1 ? b : len == 2 ? (b & 0x1F) : len == 3 ? (b & 0x0F) : (b & 0x07);
    for (size_t k = 1; k < len && i + k < utf8.size(); ++k)
      cp = (cp << 6) | (static_cast<unsigned char>(utf8[i + k]) & 0x3F);
    // Hangul, CJK, full-width forms and most emoji take two columns.
    const bool wide = (cp >= 0x1100 && cp <= 0x115F) || (cp >= 0x2E80 && cp <= 0xA4CF) ||
                      (cp >= 0xAC00 && cp <= 0xD7A3) || (cp >= 0xF900 && cp <= 0xFAFF) ||
                      (cp >= 0xFF00 && cp <= 0xFF60) || (cp >= 0x1F300 && cp <= 0x1FAFF) ||
                      (cp >= 0x20000 && cp <= 0x3FFFD);
    width += wide ? 2 : 1;
    i += len;
  }
  return width;
}

std::string Terminal::Pad(const std::string& utf8, size_t width) {
  const size_t used = Width(utf8);
  return used >= width ? utf8 : utf8 + std::string(width - used, ' ');
}

}  // namespace t4::cli
