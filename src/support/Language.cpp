#include "support/Language.h"

#include "support/Ports.h"
#include "support/ProcessValues.h"
#include "support/RunTimeError.h"

namespace t4::Language {

int32_t GetLanguageID() {
  if (ProcessValues::LanguageId() == 0) ProcessValues::SetLanguageId(kGerman);
  return ProcessValues::LanguageId();
}

void SetLanguageID(int32_t id) {
  ProcessValues::SetLanguageId(id == kGerman || id == kEnglish ? id : kGerman);
}

int32_t GetTextOffset() {
  return GetLanguageID() == kEnglish ? 10000 : 0;
}

std::u16string LoadText(int32_t id) {
  // 64-bit sum: an id near the top of the range must not wrap into the table.
  const int64_t wanted = static_cast<int64_t>(id) + GetTextOffset();
  if (wanted < INT32_MIN || wanted > INT32_MAX) {
    throw RunTimeError::Make(RunTimeError::kResourceNotFound);
  }
  auto text = Ports::Strings().Text(static_cast<int32_t>(wanted));
  if (!text) throw RunTimeError::Make(RunTimeError::kResourceNotFound);
  return *text;
}

}  // namespace t4::Language
