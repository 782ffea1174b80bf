#include "masterlist/MasterlistString.h"

namespace t4 {

MasterlistString::MasterlistString(std::shared_ptr<IRegistryAccess> registry,
                                   std::u16string officeVersion)
    : registry_(std::move(registry)),
      section_(u"Software\\Microsoft\\Office\\" + officeVersion + u"\\Outlook\\Categories") {}

std::u16string MasterlistString::ReadCategories() {
  // Registry trouble is silent: the caller sees an empty list.
  try {
    const auto data = registry_->ReadValue(section_, Setting());
    if (data && std::holds_alternative<std::u16string>(*data)) {
      return std::get<std::u16string>(*data);
    }
  } catch (...) {
  }
  return u"";
}

void MasterlistString::WriteCategories(std::u16string& list) {
  try {
    registry_->WriteValue(section_, Setting(), RegistryData(list));
  } catch (...) {
  }
}

}  // namespace t4
