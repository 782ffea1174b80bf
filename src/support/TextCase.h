#pragma once

#include <string>
#include <string_view>

namespace t4 {

// Letter case of UTF-16 text, as the library compares category names.
class TextCase {
 public:
  // Lower-case form: ASCII, Latin-1, Latin Extended-A, Greek and Cyrillic
  // capitals are mapped; every other code unit stays as it is. No other
  // folding takes place (no trimming, no accent removal).
  static std::u16string Lower(std::u16string_view text);
  static char16_t Lower(char16_t c);
};

}  // namespace t4
