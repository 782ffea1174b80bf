#include "platform/posix/ContentType.h"

#include "platform/posix/HeaderChars.h"

namespace t4::posix {

namespace {

char Lower(char c) {
  return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsTokenChar(char c) {
  return HeaderChars::IsToken(c);
}

bool EqualsNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (Lower(a[i]) != Lower(b[i])) return false;
  }
  return true;
}

class Cursor {
 public:
  explicit Cursor(std::string_view text) : text_(text) {}
  void SkipBlanks() {
    while (pos_ < text_.size() && (text_[pos_] == ' ' || text_[pos_] == '\t')) ++pos_;
  }
  bool AtEnd() const { return pos_ >= text_.size(); }
  bool Take(char c) {
    if (AtEnd() || text_[pos_] != c) return false;
    ++pos_;
    return true;
  }
  std::string_view Token() {
    const size_t start = pos_;
    while (pos_ < text_.size() && IsTokenChar(text_[pos_])) ++pos_;
    return text_.substr(start, pos_ - start);
  }
  // A quoted string without escapes; false when it is not one.
  bool Quoted(std::string_view& out) {
    if (!Take('"')) return false;
    const size_t start = pos_;
    while (pos_ < text_.size() && text_[pos_] != '"') {
      const auto u = static_cast<unsigned char>(text_[pos_]);
      if (text_[pos_] == '\\' || u >= 0x7F || (u < 0x20 && u != '\t')) return false;
      ++pos_;
    }
    if (AtEnd()) return false;
    out = text_.substr(start, pos_ - start);
    ++pos_;
    // Blanks at either end are kept by some parsers and dropped by others.
    if (!out.empty() &&
        (out.front() == ' ' || out.front() == '\t' || out.back() == ' ' || out.back() == '\t'))
      return false;
    return true;
  }

 private:
  std::string_view text_;
  size_t pos_ = 0;
};

}  // namespace

bool ContentType::Parse(std::string_view value, ContentType& out) {
  if (value.find("=?") != std::string_view::npos) return false;
  Cursor cursor(value);
  ContentType result;
  cursor.SkipBlanks();
  const std::string_view type = cursor.Token();
  if (type.empty() || !cursor.Take('/')) return false;
  const std::string_view subtype = cursor.Token();
  if (subtype.empty()) return false;
  // One allocation at most: "multipart/alternative" is longer than a
  // short string.
  result.media_.resize(type.size() + 1 + subtype.size());
  char* media = result.media_.data();
  for (const char c : type) *media++ = Lower(c);
  *media++ = '/';
  for (const char c : subtype) *media++ = Lower(c);
  cursor.SkipBlanks();
  while (!cursor.AtEnd()) {
    if (!cursor.Take(';')) return false;
    cursor.SkipBlanks();
    if (cursor.AtEnd()) break;
    const std::string_view name = cursor.Token();
    if (name.empty() || name.find('*') != std::string_view::npos) return false;
    cursor.SkipBlanks();
    if (!cursor.Take('=')) return false;
    cursor.SkipBlanks();
    std::string_view parameter;
    if (!cursor.Quoted(parameter)) {
      parameter = cursor.Token();
      if (parameter.empty()) return false;
    }
    if (result.Parameter(name) != nullptr) return false;
    result.parameters_.emplace_back(std::string(name), std::string(parameter));
    cursor.SkipBlanks();
  }
  out = std::move(result);
  return true;
}

bool ContentType::Fields::Take(std::string_view name, std::string_view raw, bool rawPlain) {
  if (EqualsNoCase(name, "Content-Type")) {
    type = raw;
    ++types;
  } else if (EqualsNoCase(name, "Content-Transfer-Encoding")) {
    transfer = raw;
    ++transfers;
  } else {
    return false;
  }
  plain = plain && rawPlain;
  return true;
}

std::string_view ContentType::Type() const {
  return std::string_view(media_).substr(0, media_.find('/'));
}

const std::string* ContentType::Parameter(std::string_view name) const {
  for (const auto& [key, value] : parameters_) {
    if (EqualsNoCase(key, name)) return &value;
  }
  return nullptr;
}

}  // namespace t4::posix
