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
  // Calls fn(name, raw, plain) for each field of `header`, up to its
  // empty line; `plain` is IsPlain(raw), found by the same pass over the
  // bytes. False (fn may have seen some fields) when the block holds what
  // only a full MIME parse may judge: a control character, a lone CR, a
  // line that is no field, or a field name with blanks, 8-bit bytes or an
  // encoded word.
  template <class Fn>
  static bool ForEach(std::string_view header, Fn&& fn);

  // The raw value with its line ends taken out (folding undone; the
  // blanks that start a continuation line stay).
  static std::string Unfold(std::string_view raw);
  // Trim(Unfold(raw)), using `scratch` only when the value is folded.
  static std::string_view Value(std::string_view raw, std::string& scratch);
  // Printable ASCII without encoded words: a value that needs no decoding.
  static bool IsPlain(std::string_view text);
  // No byte above 0x7F.
  static bool IsAscii(std::string_view text);
  // `text` without blanks and line ends at either end.
  static std::string_view Trim(std::string_view text);

 private:
  // One line of a header block, from one pass over its bytes.
  struct Line {
    size_t length = 0;                      // without its line end (CR LF or LF)
    size_t next = 0;                        // where the next line starts
    size_t colon = std::string_view::npos;  // the first colon's offset
    bool namePlain = true;                  // IsPlain of the part before the colon
    bool restPlain = true;                  // IsPlain of the rest (the whole line without a colon)
  };
  // Scans the line at `pos`. False when it has a control character or a
  // lone CR.
  static bool ScanLine(std::string_view header, size_t pos, Line& line);
};

inline bool HeaderFields::ScanLine(std::string_view header, size_t pos, Line& line) {
  line = Line();
  bool plain = true;
  const size_t size = header.size();
  size_t i = pos;
  for (; i < size; ++i) {
    const char c = header[i];
    if (!HeaderChars::StopsLineScan(c)) continue;
    if (c == '\n') break;
    if (c == '\r') {
      if (i + 1 < size && header[i + 1] == '\n') break;
      return false;
    }
    if (HeaderChars::IsControl(c)) return false;
    if (c == ':') {
      if (line.colon == std::string_view::npos) {
        line.colon = i - pos;
        line.namePlain = plain;
        plain = true;
      }
    } else if (c == '=') {
      if (i + 1 < size && header[i + 1] == '?') plain = false;
    } else {
      plain = false;  // an 8-bit byte
    }
  }
  line.length = i - pos;
  line.next = i == size ? size : (header[i] == '\r' ? i + 2 : i + 1);
  line.restPlain = plain;
  return true;
}

template <class Fn>
bool HeaderFields::ForEach(std::string_view header, Fn&& fn) {
  std::string_view name;
  size_t valueStart = 0;
  size_t valueEnd = 0;
  bool valuePlain = true;
  bool open = false;
  size_t pos = 0;
  Line line;
  while (pos < header.size()) {
    if (!ScanLine(header, pos, line)) return false;
    if (line.length == 0) break;
    const char first = header[pos];
    if (first == ' ' || first == '\t') {
      if (!open) return false;
      valueEnd = line.next;
      // A colon on a continuation line is part of the value.
      valuePlain = valuePlain && line.namePlain && line.restPlain;
    } else {
      if (line.colon == std::string_view::npos || line.colon == 0 || !line.namePlain) return false;
      const std::string_view fieldName = header.substr(pos, line.colon);
      if (HeaderChars::Any(fieldName, [](char c) { return c == ' ' || c == '\t'; })) return false;
      if (open) fn(name, header.substr(valueStart, valueEnd - valueStart), valuePlain);
      name = fieldName;
      valueStart = pos + line.colon + 1;
      valueEnd = line.next;
      valuePlain = line.restPlain;
      open = true;
    }
    pos = line.next;
  }
  if (open) fn(name, header.substr(valueStart, valueEnd - valueStart), valuePlain);
  return true;
}

}  // namespace t4::posix
