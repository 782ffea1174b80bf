#include "support/ILanguage.h"

#include "support/Language.h"

namespace t4 {

int32_t ILanguage::LanguageID() const {
  return Language::GetLanguageID();
}
void ILanguage::SetLanguageID(int32_t id) {
  Language::SetLanguageID(id);
}

}  // namespace t4
