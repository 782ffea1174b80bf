#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace t4::posix {

// What a byte of a message header is, from one table lookup. Reading a
// header asks these questions of every byte; a lookup keeps that to one
// load each, where a search in a set of characters costs a library call.
class HeaderChars {
 public:
  // A control character that a plain header line cannot hold (TAB, CR
  // and LF are judged by the line splitting, not here).
  static bool IsControl(char c) { return (Of(c) & kControl) != 0; }
  // Printable ASCII or a blank: what needs no decoding.
  static bool IsPlain(char c) { return (Of(c) & kNotPlain) == 0; }
  // A character of a MIME token (RFC 2045): printable ASCII other than
  // blanks and the tspecials.
  static bool IsToken(char c) { return (Of(c) & kToken) != 0; }
  // A blank, CR or LF.
  static bool IsSpace(char c) { return (Of(c) & kSpace) != 0; }
  // A byte a scan of a header line stops at: a control character, an
  // 8-bit byte, CR, LF, a colon or '=' (the start of an encoded word). Most bytes are
  // none of these, so the scan costs one lookup and one branch a byte.
  static bool StopsLineScan(char c) { return (Of(c) & kLineStop) != 0; }
  // True when `text` holds a byte for which `test` is true.
  template <class Test>
  static bool Any(std::string_view text, Test test) {
    for (const char c : text) {
      if (test(c)) return true;
    }
    return false;
  }

 private:
  enum : uint8_t { kControl = 1, kNotPlain = 2, kToken = 4, kSpace = 8, kLineStop = 16 };

  static constexpr std::array<uint8_t, 256> MakeTable() {
    std::array<uint8_t, 256> table{};
    constexpr std::string_view specials = "()<>@,;:\\\"/[]?=";
    for (int c = 0; c < 256; ++c) {
      uint8_t bits = 0;
      if ((c < 0x20 && c != '\t' && c != '\r' && c != '\n') || c == 0x7F) bits |= kControl;
      if (c > 0x7E) bits |= kNotPlain;
      if (c > 0x20 && c < 0x7F && specials.find(static_cast<char>(c)) == std::string_view::npos)
        bits |= kToken;
      if (c == ' ' || c == '\t' || c == '\r' || c == '\n') bits |= kSpace;
      if ((bits & (kControl | kNotPlain)) != 0 || c == '\r' || c == '\n' || c == ':' || c == '=')
        bits |= kLineStop;
      table[static_cast<size_t>(c)] = bits;
    }
    return table;
  }
  static uint8_t Of(char c) {
    static constexpr std::array<uint8_t, 256> kTable = MakeTable();
    return kTable[static_cast<unsigned char>(c)];
  }
};

}  // namespace t4::posix
