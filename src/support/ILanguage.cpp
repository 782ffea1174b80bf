#include "support/ILanguage.h"

#include "support/modLanguage.h"

namespace t4 {

int32_t ILanguage::LanguageID() const {
  return modLanguage::GetLanguageID();
}
void ILanguage::SetLanguageID(int32_t id) {
  modLanguage::SetLanguageID(id);
}

}  // namespace t4
