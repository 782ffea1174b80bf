#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "model/internal/TextArena.h"

namespace t4 {

// The texts no other item shares, its entry identifier and its subject, in
// one block of the reading's TextArena, which outlives the item. A million
// items make this the largest part of the model, so both are kept small:
// the identifier as the binary MAPI hands over (its hexadecimal text is
// made when asked for), the subject one byte a character when it has
// nothing beyond Latin-1.
class ItemText {
 public:
  ItemText() = default;

  // From the binary entry identifier.
  static ItemText FromBinary(std::string_view entryId, std::u16string_view subject,
                             TextArena& arena);
  // From an entry identifier as text: upper-case hexadecimal is kept as its
  // bytes, any other text as it is, so EntryID gives back exactly `entryId`.
  static ItemText FromText(std::u16string_view entryId, std::u16string_view subject,
                           TextArena& arena);

  // The entry identifier as upper-case hexadecimal text (or as it came).
  std::u16string EntryID() const;
  std::u16string Subject() const;

 private:
  // Header of the block: the lengths, and in their top bits whether the
  // identifier is text and whether the subject takes two bytes a character.
  struct Header {
    uint32_t entry;
    uint32_t subject;
  };
  static constexpr uint32_t kWide = 0x80000000u;
  static constexpr uint32_t kLength = 0x7FFFFFFFu;

  static ItemText Make(std::string_view entryBytes, bool entryIsText, std::u16string_view subject,
                       TextArena& arena);
  const Header* header() const { return reinterpret_cast<const Header*>(block_); }

  const char* block_ = nullptr;
};

}  // namespace t4
