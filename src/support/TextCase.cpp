#include "support/TextCase.h"

namespace t4 {

char16_t TextCase::Lower(char16_t c) {
  if (c < 0x80) return (c >= u'A' && c <= u'Z') ? static_cast<char16_t>(c + 32) : c;
  if ((c >= 0xC0 && c <= 0xDE && c != 0xD7)) return static_cast<char16_t>(c + 32);
  if (c >= 0x100 && c <= 0x17F) {
    // Latin Extended-A pairs capitals and small letters, with a shift in
    // parity between U+0138 and U+0149 and after U+0178.
    if (c == 0x130) return u'i';
    if (c == 0x178) return 0xFF;
    if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E)) {
      return (c % 2 == 1) ? static_cast<char16_t>(c + 1) : c;
    }
    if (c <= 0x137 || (c >= 0x14A && c <= 0x177)) {
      return (c % 2 == 0) ? static_cast<char16_t>(c + 1) : c;
    }
    return c;
  }
  if (c >= 0x391 && c <= 0x3AB && c != 0x3A2) return static_cast<char16_t>(c + 32);  // Greek
  if (c >= 0x410 && c <= 0x42F) return static_cast<char16_t>(c + 32);                // Cyrillic
  if (c >= 0x400 && c <= 0x40F) return static_cast<char16_t>(c + 80);
  return c;
}

std::u16string TextCase::Lower(std::u16string_view text) {
  std::u16string out(text);
  for (char16_t& c : out) c = Lower(c);
  return out;
}

}  // namespace t4
