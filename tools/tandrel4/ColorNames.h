#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace t4::cli {

// The category colours by the numbers the library keeps: 0 to 24 are the
// 25 colours of Outlook's category list from Red to Dark Maroon, -1 is "no
// colour" and -2 "not known" (older master lists keep no colour).
class ColorNames {
 public:
  struct Rgb {
    uint8_t r, g, b;
  };

  // "Red", "Dark Steel", ...; "None" for -1, "-" for -2 and unknown values.
  static std::string Name(int32_t color);
  // The colour's look, for a swatch; none for -1, -2 and unknown values.
  static std::optional<Rgb> Look(int32_t color);
  // The number for a name (letter case and blanks ignored: "darkblue",
  // "Dark Blue") or a decimal number from -2 to 24; none otherwise.
  static std::optional<int32_t> Parse(const std::string& text);
};

}  // namespace t4::cli
