#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace t4::posix {

// Writes the categories of a message as its Keywords header field and puts
// that field into a message's bytes, leaving every other byte alone.
//
// The field lists the names separated by ", ", in the order given; empty
// names are left out. A name is written as it is when it is printable ASCII
// without a comma, without "=?" and without blanks at either end; any other
// name (non-ASCII letters, a comma, control characters, surrounding
// blanks) becomes one or more RFC 2047 encoded words "=?UTF-8?B?...?="
// (base64 of at most 45 bytes each, split between characters), which
// MessageHeaders decodes back into exactly that name. Lines are folded
// after a comma or between encoded words, so they stay within 78
// characters where a name allows it; folds use the message's line end.
class KeywordsField {
 public:
  // "Keywords: a, b" + lineEnd, folded; empty when `names` has no name.
  static std::string Format(const std::vector<std::string>& names, std::string_view lineEnd);
  // `message` with its Keywords field(s) replaced by the field for
  // `names`: the first field's bytes are replaced, later ones removed; a
  // message without one gets it at the end of its header block. With no
  // names the fields are removed.
  static std::string Replace(std::string_view message, const std::vector<std::string>& names);
  // Whether `name` has to be written as encoded words.
  static bool NeedsEncoding(std::string_view name);
  // The line end the header uses: CR LF when its first line ends so, else LF.
  static std::string_view LineEndOf(std::string_view message);
};

}  // namespace t4::posix
