#include "platform/posix/RegistryText.h"

#include <algorithm>
#include <variant>
#include <vector>

#include "support/HexCodec.h"
#include "support/TextCase.h"

namespace t4 {

namespace {

std::u16string_view UpToNul(std::u16string_view text) {
  return text.substr(0, text.find(u'\0'));
}

}  // namespace

std::u16string RegistryText::Escape(std::u16string_view text) {
  text = UpToNul(text);
  std::u16string out;
  out.reserve(text.size() + 8);
  for (const char16_t c : text) {
    switch (c) {
      case u'\\':
        out += u"\\\\";
        break;
      case u'"':
        out += u"\\\"";
        break;
      // A raw line break would end the line; the editor writes these two
      // escapes and reads them back.
      case u'\r':
        out += u"\\r";
        break;
      case u'\n':
        out += u"\\n";
        break;
      default:
        out += c;
    }
  }
  return out;
}

std::u16string RegistryText::KeyLine(std::u16string_view key, std::u16string_view lineEnd) {
  std::u16string out = u"[";
  out += kRoot;
  key = TrimSeparators(key);
  if (!key.empty()) {
    out += u'\\';
    out += key;
  }
  out += u']';
  out += lineEnd;
  return out;
}

std::u16string RegistryText::ValueLine(std::u16string_view name, const RegistryData& data,
                                       std::u16string_view lineEnd) {
  std::u16string out = UpToNul(name).empty() ? u"@=" : u"\"" + Escape(name) + u"\"=";
  if (const auto* text = std::get_if<std::u16string>(&data)) {
    out += u'"';
    out += Escape(*text);
    out += u'"';
    out += lineEnd;
    return out;
  }
  const auto& bytes = std::get<std::vector<uint8_t>>(data);
  out += u"hex:";
  // Filled through a pointer: a mebibyte of data makes three million
  // characters, and this loop is most of the cost of writing it.
  const size_t start = out.size();
  const size_t wraps = bytes.size() / 25 + 1;
  out.resize(start + bytes.size() * 3 + wraps * (3 + lineEnd.size()) + lineEnd.size());
  char16_t* p = out.data() + start;
  size_t column = start;
  for (size_t i = 0; i < bytes.size(); ++i) {
    p = HexCodec::PutByte(bytes[i], p, HexCodec::Letters::kLower);
    if (i + 1 == bytes.size()) break;
    *p++ = u',';
    column += 3;
    if (column >= kWrapColumn) {
      *p++ = u'\\';
      p = std::copy(lineEnd.begin(), lineEnd.end(), p);
      *p++ = u' ';
      *p++ = u' ';
      column = 2;
    }
  }
  p = std::copy(lineEnd.begin(), lineEnd.end(), p);
  out.resize(static_cast<size_t>(p - out.data()));
  return out;
}

bool RegistryText::SameName(std::u16string_view a, std::u16string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (a[i] != b[i] && TextCase::Lower(a[i]) != TextCase::Lower(b[i])) return false;
  }
  return true;
}

bool RegistryText::IsWithin(std::u16string_view key, std::u16string_view ancestor) {
  if (ancestor.empty()) return true;
  if (key.size() < ancestor.size()) return false;
  if (!SameName(key.substr(0, ancestor.size()), ancestor)) return false;
  return key.size() == ancestor.size() || key[ancestor.size()] == u'\\';
}

std::u16string_view RegistryText::TrimSeparators(std::u16string_view key) {
  while (!key.empty() && key.front() == u'\\') key.remove_prefix(1);
  while (!key.empty() && key.back() == u'\\') key.remove_suffix(1);
  return key;
}

std::string RegistryText::Encode(std::u16string_view text) {
  std::string out(2 + text.size() * 2, '\0');
  out[0] = '\xFF';
  out[1] = '\xFE';
  char* p = out.data() + 2;
  for (const char16_t c : text) {
    *p++ = static_cast<char>(c & 0xFF);
    *p++ = static_cast<char>(c >> 8);
  }
  return out;
}

}  // namespace t4
