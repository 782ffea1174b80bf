#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace t4::posix {

// A Content-Type value in the plain form nearly every mail program writes:
// "type/subtype" followed by parameters whose values are tokens or quoted
// strings without escapes. Anything else (comments, escapes, RFC 2231
// parameter names, 8-bit or encoded text, a repeated parameter) is left to
// GMime's full parse: Parse returns false for it.
class ContentType {
 public:
  // Parses `value` (unfolded, ASCII); false when it is not plain.
  static bool Parse(std::string_view value, ContentType& out);

  // "type/subtype", lower case.
  const std::string& Media() const { return media_; }
  // The media type before the slash, lower case.
  std::string_view Type() const;
  bool Is(std::string_view media) const { return media_ == media; }
  // The value of the parameter `name` (any letter case), or nullptr.
  const std::string* Parameter(std::string_view name) const;

  // The Content-Type and Content-Transfer-Encoding fields of one header
  // block, as its fields pass by (HeaderFields::ForEach).
  struct Fields {
    std::string_view type;      // raw value of the last Content-Type
    std::string_view transfer;  // raw value of the last Content-Transfer-Encoding
    int types = 0;
    int transfers = 0;
    bool plain = true;  // every one of them plain

    // Keeps the field when it is one of the two; false for any other.
    bool Take(std::string_view name, std::string_view raw, bool rawPlain);
    // At most one of each, and all plain: what the fast reading may judge.
    bool Judgeable() const { return types <= 1 && transfers <= 1 && plain; }
  };

 private:
  std::string media_;
  std::vector<std::pair<std::string, std::string>> parameters_;
};

}  // namespace t4::posix
