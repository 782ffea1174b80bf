#include "model/ItemText.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "support/HexCodec.h"

namespace t4 {

namespace {

bool IsUpperHex(std::u16string_view text) {
  if (text.size() % 2 != 0) return false;
  for (char16_t c : text) {
    if (!((c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'F'))) return false;
  }
  return true;
}

bool FitsLatin1(std::u16string_view text) {
  for (char16_t c : text) {
    if (c > 0xFF) return false;
  }
  return true;
}

}  // namespace

ItemText& ItemText::operator=(ItemText&& other) noexcept {
  if (this != &other) {
    std::free(block_);
    block_ = other.block_;
    other.block_ = nullptr;
  }
  return *this;
}

ItemText::~ItemText() {
  std::free(block_);
}

ItemText ItemText::FromBinary(std::string_view entryId, std::u16string_view subject) {
  return Make(entryId, false, subject);
}

ItemText ItemText::FromText(std::u16string_view entryId, std::u16string_view subject) {
  if (IsUpperHex(entryId)) {
    std::string bytes;
    HexCodec::Decode(entryId, bytes);
    return Make(bytes, false, subject);
  }
  return Make(std::string_view(reinterpret_cast<const char*>(entryId.data()),
                               entryId.size() * sizeof(char16_t)),
              true, subject);
}

ItemText ItemText::Make(std::string_view entryBytes, bool entryIsText,
                        std::u16string_view subject) {
  const bool wide = !FitsLatin1(subject);
  const size_t subjectBytes = subject.size() * (wide ? sizeof(char16_t) : 1);
  if (entryBytes.size() > kLength || subject.size() > kLength) throw std::bad_alloc();
  ItemText text;
  text.block_ = static_cast<char*>(std::malloc(sizeof(Header) + entryBytes.size() + subjectBytes));
  if (text.block_ == nullptr) throw std::bad_alloc();
  Header header{static_cast<uint32_t>(entryBytes.size()) | (entryIsText ? kWide : 0),
                static_cast<uint32_t>(subject.size()) | (wide ? kWide : 0)};
  std::memcpy(text.block_, &header, sizeof header);
  char* p = text.block_ + sizeof(Header);
  if (!entryBytes.empty()) std::memcpy(p, entryBytes.data(), entryBytes.size());
  p += entryBytes.size();
  if (wide) {
    if (!subject.empty()) std::memcpy(p, subject.data(), subjectBytes);
  } else {
    for (char16_t c : subject) *p++ = static_cast<char>(c);
  }
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
