#include "model/internal/ItemText.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "support/HexCodec.h"

namespace t4 {

namespace {

bool FitsLatin1(std::u16string_view text) {
  for (char16_t c : text) {
    if (c > 0xFF) return false;
  }
  return true;
}

}  // namespace

ItemText ItemText::FromBinary(std::string_view entryId, std::u16string_view subject,
                              TextArena& arena) {
  return Make(entryId, false, subject, arena);
}

ItemText ItemText::FromText(std::u16string_view entryId, std::u16string_view subject,
                            TextArena& arena) {
  // Reused between calls: reading a million items makes no heap block per
  // identifier for this step.
  thread_local std::string bytes;
  if (HexCodec::DecodeUpper(entryId, bytes)) return Make(bytes, false, subject, arena);
  return Make(std::string_view(reinterpret_cast<const char*>(entryId.data()),
                               entryId.size() * sizeof(char16_t)),
              true, subject, arena);
}

ItemText ItemText::Make(std::string_view entryBytes, bool entryIsText, std::u16string_view subject,
                        TextArena& arena) {
  const bool wide = !FitsLatin1(subject);
  const size_t subjectBytes = subject.size() * (wide ? sizeof(char16_t) : 1);
  if (entryBytes.size() > kLength || subject.size() > kLength) throw std::bad_alloc();
  char* block = arena.Allocate(sizeof(Header) + entryBytes.size() + subjectBytes);
  Header header{static_cast<uint32_t>(entryBytes.size()) | (entryIsText ? kWide : 0),
                static_cast<uint32_t>(subject.size()) | (wide ? kWide : 0)};
  std::memcpy(block, &header, sizeof header);
  char* p = block + sizeof(Header);
  if (!entryBytes.empty()) std::memcpy(p, entryBytes.data(), entryBytes.size());
  p += entryBytes.size();
  if (wide) {
    if (!subject.empty()) std::memcpy(p, subject.data(), subjectBytes);
  } else {
    for (char16_t c : subject) *p++ = static_cast<char>(c);
  }
  ItemText text;
  text.block_ = block;
  return text;
}

std::u16string ItemText::EntryID() const {
  if (block_ == nullptr) return {};
  const Header h = *header();
  const char* p = block_ + sizeof(Header);
  const size_t length = h.entry & kLength;
  if (h.entry & kWide) {
    std::u16string text(length / sizeof(char16_t), u'\0');
    std::memcpy(text.data(), p, length);
    return text;
  }
  return HexCodec::Encode(std::string_view(p, length));
}

std::u16string ItemText::Subject() const {
  if (block_ == nullptr) return {};
  const Header h = *header();
  const char* p = block_ + sizeof(Header) + (h.entry & kLength);
  const size_t length = h.subject & kLength;
  std::u16string text(length, u'\0');
  if (h.subject & kWide) {
    std::memcpy(text.data(), p, length * sizeof(char16_t));
  } else {
    for (size_t i = 0; i < length; ++i) text[i] = static_cast<unsigned char>(p[i]);
  }
  return text;
}

}  // namespace t4
