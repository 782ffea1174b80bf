#include "platform/posix/HeaderFields.h"

#include "platform/posix/HeaderChars.h"

namespace t4::posix {

size_t HeaderFields::CheckedLine(std::string_view header, size_t pos, size_t next) {
  size_t end = next;
  if (end > pos && header[end - 1] == '\n') {
    --end;
    if (end > pos && header[end - 1] == '\r') --end;
  }
  for (size_t i = pos; i < end; ++i) {
    const char c = header[i];
    if (HeaderChars::IsControl(c) || c == '\r') return std::string_view::npos;
  }
  return end - pos;
}

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
  if (HeaderChars::Any(text, [](char c) { return !HeaderChars::IsPlain(c); })) return false;
  return text.find("=?") == std::string_view::npos;
}

std::string_view HeaderFields::Trim(std::string_view text) {
  const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

}  // namespace t4::posix
