#include "support/Transliteration.h"

#include <string_view>

#include "support/Language.h"

namespace t4::Transliteration {

namespace {

void ReplaceAll(std::u16string& text, char16_t from, std::u16string_view to) {
  size_t pos = 0;
  while ((pos = text.find(from, pos)) != std::u16string::npos) {
    text.replace(pos, 1, to);
    pos += to.size();
  }
}

}  // namespace

void ReplaceUmlauts(std::u16string& name) {
  // The i-th letter of the first text becomes the i-th pair of the second.
  constexpr std::u16string_view kLetters = u"ÄÖÜäöüß";
  constexpr std::u16string_view kPairs = u"AeOeUeaeoeuess";
  for (size_t i = 0; i < kLetters.size(); ++i) {
    ReplaceAll(name, kLetters[i], kPairs.substr(2 * i, 2));
  }
  ReplaceAll(name, u'\u00B4', u"'");
  ReplaceAll(name, u'`', u"'");
}

void TransliterateForLanguage(std::u16string& name) {
  if (Language::GetLanguageID() != Language::kGerman) ReplaceUmlauts(name);
}

}  // namespace t4::Transliteration
