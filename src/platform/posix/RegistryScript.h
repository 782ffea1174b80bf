#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/IRegistryAccess.h"

namespace t4 {

// A registry script in the Unicode form the registry editor exports
// ("Windows Registry Editor Version 5.00", UTF-16LE with byte-order mark),
// held as its lines, each kept exactly as it came, plus what the lines below
// HKEY_CURRENT_USER say. The script means what importing it would do: lines
// apply in order, so a later value line wins over an earlier one, "[-key]"
// removes a key with everything below it and "name"=- removes a value. An
// edit touches only the lines of the value it concerns; every other line
// stays byte for byte.
class RegistryScript {
 public:
  // Parses a file's bytes. A file the editor would not import whole (no
  // UTF-16LE byte-order mark, odd length, another first line, an
  // unterminated string, a bad hex digit, a last line without line end, a
  // continuation at the end, ...) is rejected with run-time error 321
  // "Invalid file format", the file `path` and the line named in parentheses.
  static RegistryScript Parse(std::string_view bytes, const std::string& path);
  // The script of a file not written yet: the first line and a blank line.
  static RegistryScript Empty();

  // The value's data, or nothing when the value or its key does not exist.
  // String values (also hex(1) and hex(2)) give text up to the first NUL,
  // every other type its bytes (dword: four bytes, least significant first).
  std::optional<RegistryData> Read(std::u16string_view key, std::u16string_view name) const;
  // The file's bytes with the value set: its current line replaced in place,
  // else the line added to the key's last block, else a new block for the
  // key appended at the end.
  std::string WithValue(std::u16string_view key, std::u16string_view name,
                        const RegistryData& data) const;
  // The file's bytes without the value, or nothing when the value does not
  // exist (the file needs no change then).
  std::optional<std::string> WithoutValue(std::u16string_view key, std::u16string_view name) const;

 private:
  class Parser;

  enum class Kind : uint8_t { kBlank, kOther, kKey, kKeyDeletion, kValue, kValueDeletion };
  static constexpr size_t kNone = static_cast<size_t>(-1);

  // One line of the file; a value whose bytes continue over several lines
  // is one Line spanning all of them.
  struct Line {
    Line() = default;
    Line(Kind k, size_t b, size_t e) : kind(k), begin(b), end(e) {}

    Kind kind = Kind::kOther;
    size_t begin = 0;  // first code unit in text_
    size_t end = 0;    // past the (last) line end
    // Key lines: below HKEY_CURRENT_USER, and the path below the root.
    bool currentUser = false;
    std::u16string path;
    // Value lines: the name ("" for the default value), the key line they
    // follow (kNone outside a key) and the data.
    std::u16string name;
    size_t keyLine = kNone;
    RegistryData data;
  };

  // Whether value line `line` sets or removes a value of `key`.
  bool InKey(const Line& line, std::u16string_view key) const;
  // The line that gives the value its data now, or kNone.
  size_t Current(std::u16string_view key, std::u16string_view name) const;
  // The last "[-key]" line removing `key` or a key above it, or kNone.
  size_t LastRemoval(std::u16string_view key) const;

  std::u16string text_;
  std::vector<Line> lines_;
  std::u16string lineEnd_ = u"\r\n";
};

}  // namespace t4
