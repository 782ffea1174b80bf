#include "platform/posix/XmlShapeCheck.h"

#include <cstdint>

namespace t4::posix {

namespace {

// The file as code units: bytes, or 16-bit units in the file's byte order.
class Units {
 public:
  explicit Units(std::string_view bytes) : bytes_(bytes) {
    const auto b = [&](size_t i) { return static_cast<unsigned char>(bytes_[i]); };
    if (bytes_.size() >= 2 && ((b(0) == 0xFF && b(1) == 0xFE) || (b(0) == '<' && b(1) == 0))) {
      width_ = 2;
      little_ = true;
    } else if (bytes_.size() >= 2 &&
               ((b(0) == 0xFE && b(1) == 0xFF) || (b(0) == 0 && b(1) == '<'))) {
      width_ = 2;
      little_ = false;
    }
  }
  size_t size() const { return bytes_.size() / width_; }
  uint32_t operator[](size_t i) const {
    if (width_ == 1) return static_cast<unsigned char>(bytes_[i]);
    const auto lo = static_cast<unsigned char>(bytes_[2 * i + (little_ ? 0 : 1)]);
    const auto hi = static_cast<unsigned char>(bytes_[2 * i + (little_ ? 1 : 0)]);
    return static_cast<uint32_t>(hi) << 8 | lo;
  }
  // True when the units from `at` spell `ascii`.
  bool Match(size_t at, std::string_view ascii) const {
    if (at + ascii.size() > size()) return false;
    for (size_t k = 0; k < ascii.size(); ++k) {
      if ((*this)[at + k] != static_cast<unsigned char>(ascii[k])) return false;
    }
    return true;
  }
  // The position just past the next `ascii` from `at`, or size().
  size_t After(size_t at, std::string_view ascii) const {
    for (size_t i = at; i < size(); ++i) {
      if (Match(i, ascii)) return i + ascii.size();
    }
    return size();
  }

 private:
  std::string_view bytes_;
  size_t width_ = 1;
  bool little_ = true;
};

}  // namespace

std::string XmlShapeCheck::TooLarge() {
  return "larger than " + std::to_string(kMaxBytes >> 20) + " MiB";
}

std::string XmlShapeCheck::Check(std::string_view bytes) {
  if (bytes.size() > kMaxBytes) return TooLarge();
  const Units u(bytes);
  const size_t n = u.size();
  size_t line = 1;
  size_t i = 0;
  // Counts the line breaks up to `to` and moves there.
  const auto advance = [&](size_t to) {
    for (; i < to && i < n; ++i) {
      if (u[i] == '\n') ++line;
    }
  };
  while (i < n) {
    if (u[i] != '<') {
      advance(i + 1);
      continue;
    }
    if (u.Match(i, "<!--")) {
      advance(u.After(i + 4, "-->"));
    } else if (u.Match(i, "<![CDATA[")) {
      advance(u.After(i + 9, "]]>"));
    } else if (u.Match(i, "<?")) {
      advance(u.After(i + 2, "?>"));
    } else if (u.Match(i, "<!") || u.Match(i, "</")) {
      advance(u.After(i + 2, ">"));
    } else {
      // A start tag: every '=' outside a quoted value begins an attribute.
      const size_t tagLine = line;
      size_t attributes = 0;
      uint32_t quote = 0;
      size_t k = i + 1;
      for (; k < n; ++k) {
        const uint32_t c = u[k];
        if (quote != 0) {
          if (c == quote) quote = 0;
        } else if (c == '"' || c == '\'') {
          quote = c;
        } else if (c == '=') {
          if (++attributes > kMaxAttributes) {
            return "line " + std::to_string(tagLine) + ": an element with more than " +
                   std::to_string(kMaxAttributes) + " attributes";
          }
        } else if (c == '>') {
          break;
        }
      }
      advance(k + 1);
    }
  }
  return std::string();
}

}  // namespace t4::posix
