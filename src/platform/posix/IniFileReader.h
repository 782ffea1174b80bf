#pragma once

#include <string>
#include <string_view>

namespace t4 {

// Reads values out of INI text with the observable rules of the Windows
// profile API: section and key names compare case-insensitively, names and
// values are trimmed of blanks and tabs, a value enclosed in a pair of
// matching quotes loses them, the first section of a name and the first key
// in it win, and a missing section
// or key gives "". Values are cut to 254 characters, the room the library's
// 255-character buffer leaves.
class IniFileReader {
 public:
  static constexpr size_t kMaxValue = 254;

  // The value of `key` in `section` of `text`.
  static std::u16string Lookup(std::u16string_view text, std::u16string_view section,
                               std::u16string_view key);
  // Decodes an INI file's bytes: UTF-16LE with byte-order mark, else UTF-8
  // (a UTF-8 byte-order mark is dropped).
  static std::u16string Decode(std::string_view bytes);
};

}  // namespace t4
