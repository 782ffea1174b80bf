#include "platform/posix/XmlRulesReader.h"

#include "platform/posix/XmlCategoryStore.h"
#include "platform/posix/XmlRuleStore.h"
#include "rules/StoredCategoryList.h"
#include "rules/StoredCategoryRules.h"

namespace t4::posix {

std::shared_ptr<ICategoryRules> XmlRulesReader::GetCategoryRules(IClientApp&) {
  return std::make_shared<StoredCategoryRules>(
      std::make_shared<XmlRuleStore>(profileDir_ / kRulesFile));
}

std::shared_ptr<IRulesCategoryList> XmlRulesReader::GetMasterlist(IClientApp&) {
  return std::make_shared<StoredCategoryList>(
      std::make_shared<XmlCategoryStore>(profileDir_ / kCategoriesFile));
}

}  // namespace t4::posix
