#include "platform/win32/DispatchCategoryRules.h"

namespace t4::win32 {

bool DispatchCategoryRules::Changed() {
  return rules_.Get(u"Changed").ToBool();
}

void DispatchCategoryRules::Save() {
  rules_.Call(u"Save");
}

void DispatchCategoryRules::RenameCategory(std::u16string& oldName, std::u16string& newName) {
  Variant args[] = {Variant::TextRef(oldName), Variant::TextRef(newName)};
  rules_.Call(u"RenameCategory", args);
  oldName = args[0].RefText();
  newName = args[1].RefText();
}

}  // namespace t4::win32
