#pragma once

#include <string>
#include <string_view>

namespace t4 {

// The one text encoding rule of the files the library imports and exports
// (txt, csv, reg and xml alike). Writing: UTF-8 with a byte-order mark, so
// that Windows programs that guess (Notepad, Excel, the registry editor)
// take it as UTF-8. Reading, the first rule that fits:
//   1. a byte-order mark: UTF-8 (EF BB BF), UTF-16LE (FF FE) or UTF-16BE
//      (FE FF); the registry editor writes UTF-16LE with a mark;
//   2. bytes that are valid UTF-8 as a whole: UTF-8 (plain ASCII included);
//   3. anything else: Windows-1252, the ANSI code page of the Western
//      Windows installations whose older files (registry scripts of
//      REGEDIT4, CSV from Excel) carry no mark.
// Nothing is refused: what cannot be decoded becomes U+FFFD (a lone
// surrogate in UTF-16, a broken sequence after a UTF-8 mark, an odd last
// byte of UTF-16). NUL characters are kept; whoever reads the text decides
// about them.
class TextEncoding {
 public:
  enum class Kind { kUtf8Bom, kUtf16Le, kUtf16Be, kUtf8, kWindows1252 };

  // Which rule the bytes fall under.
  static Kind Detect(std::string_view bytes);
  static std::u16string Decode(std::string_view bytes);
  // The byte-order mark and the UTF-8 of `text` (a lone surrogate becomes
  // U+FFFD).
  static std::string Encode(std::u16string_view text);

  // Strict UTF-8: no overlong forms, no surrogates, nothing above
  // U+10FFFF, no sequence cut short.
  static bool IsValidUtf8(std::string_view bytes);
  static std::u16string FromWindows1252(std::string_view bytes);
  // UTF-16 code units, little- or big-endian; unpaired surrogates and an
  // odd last byte become U+FFFD.
  static std::u16string FromUtf16(std::string_view bytes, bool bigEndian);
};

}  // namespace t4
