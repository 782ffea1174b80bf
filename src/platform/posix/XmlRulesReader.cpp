#include "platform/posix/XmlRulesReader.h"

#include "masterlist/CategoryListObject.h"
#include "masterlist/CategoryRulesObject.h"
#include "platform/posix/XmlCategoryStore.h"
#include "platform/posix/XmlRuleStore.h"

namespace t4::posix {

std::shared_ptr<ICategoryRules> XmlRulesReader::GetCategoryRules(IClientApp&) {
  return std::make_shared<CategoryRulesObject>(
      std::make_shared<XmlRuleStore>(profileDir_ / kRulesFile));
}

std::shared_ptr<IMasterlistObject> XmlRulesReader::GetMasterlist(IClientApp&) {
  return std::make_shared<CategoryListObject>(
      std::make_shared<XmlCategoryStore>(profileDir_ / kCategoriesFile));
}

}  // namespace t4::posix
