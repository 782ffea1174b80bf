#pragma once

#include <string>

namespace t4::Transliteration {

// Transliterates German letters for hosts that do not run in German:
// "ÄÖÜäöüß" become "Ae", "Oe", "Ue", "ae", "oe", "ue", "ss", and the acute and
// grave accents become an apostrophe. Exact, case-sensitive, in place.
void ReplaceUmlauts(std::u16string& name);

// Applies ReplaceUmlauts when the process-wide language is not German (1031);
// under German names stay as they are. Renaming and adding categories use it.
void TransliterateForLanguage(std::u16string& name);

}  // namespace t4::Transliteration
