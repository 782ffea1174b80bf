#include "platform/posix/XmlRulesStorage.h"

#include "platform/posix/XmlCategoryStore.h"
#include "platform/posix/XmlRuleStore.h"

namespace t4::posix {

std::shared_ptr<ICategoryStore> XmlRulesStorage::OpenCategoryStore() {
  return std::make_shared<XmlCategoryStore>(profileDir_ / kCategoriesFile);
}

std::shared_ptr<IRuleStore> XmlRulesStorage::OpenRuleStore() {
  return std::make_shared<XmlRuleStore>(profileDir_ / kRulesFile);
}

}  // namespace t4::posix
