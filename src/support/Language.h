#pragma once

#include <cstdint>
#include <string>

namespace t4::Language {

constexpr int32_t kGerman = 1031;
constexpr int32_t kEnglish = 1033;

// The process-wide language identifier; stores 1031 first when none is set.
int32_t GetLanguageID();
// Stores `id` when it is 1031 or 1033, otherwise 1031.
void SetLanguageID(int32_t id);
// Offset of the current language's block in the message table: 1033 gives
// 10000, every other language 0.
int32_t GetTextOffset();
// The message table's text for `id` plus the current offset. Throws the
// run-time error "Resource with identifier not found" (326) when the table
// has no such text, as the English block never has.
std::u16string LoadText(int32_t id);

}  // namespace t4::Language
