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

 private:
  std::string media_;
  std::vector<std::pair<std::string, std::string>> parameters_;
};

}  // namespace t4::posix
