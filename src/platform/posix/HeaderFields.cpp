#include "platform/posix/HeaderFields.h"

#include "platform/posix/HeaderChars.h"

namespace t4::posix {

std::string HeaderFields::Unfold(std::string_view raw) {
  std::string value;
  value.reserve(raw.size());
  for (const char c : raw) {
    if (c != '\r' && c != '\n') value += c;
  }
  return value;
}

std::string_view HeaderFields::Value(std::string_view raw, std::string& scratch) {
  const std::string_view trimmed = Trim(raw);
  if (!HeaderChars::Any(trimmed, [](char c) { return c == '\r' || c == '\n'; })) return trimmed;
  scratch = Unfold(raw);
  return Trim(scratch);
}

bool HeaderFields::IsPlain(std::string_view text) {
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (!HeaderChars::IsPlain(c)) return false;
    if (c == '=' && i + 1 < text.size() && text[i + 1] == '?') return false;
  }
  return true;
}

bool HeaderFields::IsAscii(std::string_view text) {
  for (const char c : text) {
    if (static_cast<unsigned char>(c) > 0x7F) return false;
  }
  return true;
}

std::string_view HeaderFields::Trim(std::string_view text) {
  const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

}  // namespace t4::posix
