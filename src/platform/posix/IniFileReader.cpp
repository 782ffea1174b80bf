#include "platform/posix/IniFileReader.h"

#include "support/Utf.h"

namespace t4 {

namespace {

bool IsBlank(char16_t c) {
  return c == u' ' || c == u'\t' || c == u'\r';
}

std::u16string_view Trim(std::u16string_view s) {
  while (!s.empty() && IsBlank(s.front())) s.remove_prefix(1);
  while (!s.empty() && IsBlank(s.back())) s.remove_suffix(1);
  return s;
}

char16_t Fold(char16_t c) {
  if (c >= u'A' && c <= u'Z') return c + 32;
  if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return c + 32;  // Latin-1 capitals
  return c;
}

bool SameName(std::u16string_view a, std::u16string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (Fold(a[i]) != Fold(b[i])) return false;
  }
  return true;
}

}  // namespace

std::u16string IniFileReader::Lookup(std::u16string_view text, std::u16string_view section,
                                     std::u16string_view key) {
  const std::u16string_view wantedSection = Trim(section);
  const std::u16string_view wantedKey = Trim(key);
  bool inSection = false;
  bool sectionSeen = false;
  size_t pos = 0;
  while (pos <= text.size()) {
    size_t end = text.find(u'\n', pos);
    if (end == std::u16string_view::npos) end = text.size();
    const std::u16string_view line = Trim(text.substr(pos, end - pos));
    pos = end + 1;
    if (!line.empty() && line.front() == u'[') {
      const size_t close = line.find(u']');
      const std::u16string_view name =
          Trim(line.substr(1, close == std::u16string_view::npos ? line.size() - 1 : close - 1));
      // Only the first section of a name counts; the profile API does not
      // look into later sections of the same name.
      if (sectionSeen) return u"";
      inSection = SameName(name, wantedSection);
      sectionSeen = inSection;
      continue;
    }
    if (!inSection || line.empty()) continue;
    const size_t eq = line.find(u'=');
    if (eq == std::u16string_view::npos) continue;
    if (!SameName(Trim(line.substr(0, eq)), wantedKey)) continue;
    std::u16string_view value = Trim(line.substr(eq + 1));
    if (value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
        value.back() == value.front()) {
      value = value.substr(1, value.size() - 2);
    }
    return std::u16string(value.substr(0, kMaxValue));
  }
  return u"";
}

std::u16string IniFileReader::Decode(std::string_view bytes) {
  if (bytes.size() >= 2 && static_cast<unsigned char>(bytes[0]) == 0xFF &&
      static_cast<unsigned char>(bytes[1]) == 0xFE) {
    std::u16string out;
    for (size_t i = 2; i + 1 < bytes.size(); i += 2) {
      out += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                   (static_cast<unsigned char>(bytes[i + 1]) << 8));
    }
    return out;
  }
  if (bytes.size() >= 3 && bytes.substr(0, 3) == "\xEF\xBB\xBF") bytes.remove_prefix(3);
  return Utf::FromUtf8(bytes);
}

}  // namespace t4
