#pragma once

#include <string>
#include <string_view>

#include "platform/posix/HeaderChars.h"

namespace t4::posix {

// Splits a header block into its fields without copying: each field is
// its name and its raw value, from after the colon to the end of its last
// (folded) line, line ends included. Used by the fast reading of plain
// headers, which hands only the values that need decoding to GMime.
class HeaderFields {
 public:
  // Calls fn(name, raw) for each field of `header`, up to its empty line.
  // False (fn may have seen some fields) when the block holds what only a
  // full MIME parse may judge: a control character, a lone CR, a line that
  // is no field, or a field name with blanks or 8-bit bytes.
  template <class Fn>
  static bool ForEach(std::string_view header, Fn&& fn);

  // The raw value with its line ends taken out (folding undone; the
  // blanks that start a continuation line stay).
  static std::string Unfold(std::string_view raw);
  // Trim(Unfold(raw)), using `scratch` only when the value is folded.
  static std::string_view Value(std::string_view raw, std::string& scratch);
  // Printable ASCII without encoded words: a value that needs no decoding.
  static bool IsPlain(std::string_view text);
  // `text` without blanks and line ends at either end.
  static std::string_view Trim(std::string_view text);

 private:
  // Length of the line at `pos` without its line end (CR LF or LF); npos
  // when the line has a control character or a lone CR.
  static size_t CheckedLine(std::string_view header, size_t pos, size_t next);
};

template <class Fn>
bool HeaderFields::ForEach(std::string_view header, Fn&& fn) {
  std::string_view name;
  size_t valueStart = 0;
  size_t valueEnd = 0;
  bool open = false;
  size_t pos = 0;
  while (pos < header.size()) {
    const size_t newline = header.find('\n', pos);
    const size_t next = newline == std::string_view::npos ? header.size() : newline + 1;
    const size_t length = CheckedLine(header, pos, next);
    if (length == std::string_view::npos) return false;
    if (length == 0) break;
    const char first = header[pos];
    if (first == ' ' || first == '\t') {
      if (!open) return false;
      valueEnd = next;
    } else {
      const std::string_view line = header.substr(pos, length);
      const size_t colon = line.find(':');
      if (colon == std::string_view::npos || colon == 0) return false;
      const std::string_view fieldName = line.substr(0, colon);
      if (HeaderChars::Any(fieldName, [](char c) { return c == ' ' || c == '\t'; }) ||
          !IsPlain(fieldName)) {
        return false;
      }
      if (open) fn(name, header.substr(valueStart, valueEnd - valueStart));
      name = fieldName;
      valueStart = pos + colon + 1;
      valueEnd = next;
      open = true;
    }
    pos = next;
  }
  if (open) fn(name, header.substr(valueStart, valueEnd - valueStart));
  return true;
}

}  // namespace t4::posix
