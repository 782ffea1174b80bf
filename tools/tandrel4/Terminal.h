#pragma once

#include <cstdio>
#include <string>

namespace t4::cli {

// What the standard output can show: colour only on a terminal that is
// not "dumb" and when NO_COLOR is not set; 24-bit colour when COLORTERM
// says so, else the 256-colour palette.
class Terminal {
 public:
  static Terminal Detect(std::FILE* out = stdout);
  static Terminal Plain() { return Terminal(); }

  bool Colors() const { return colors_; }
  // A two-cell swatch in this colour, or "" without colour support.
  std::string Swatch(unsigned r, unsigned g, unsigned b) const;
  // Columns a UTF-8 text takes (one per code point, two for wide East
  // Asian characters); for lining up tables.
  static size_t Width(const std::string& utf8);
  // `utf8` padded with blanks to `width` columns.
  static std::string Pad(const std::string& utf8, size_t width);

 private:
  bool colors_ = false;
  bool trueColor_ = false;
};

}  // namespace t4::cli
