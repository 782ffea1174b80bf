#include "rules/StoredRulesReader.h"

#include "rules/StoredCategoryList.h"
#include "rules/StoredCategoryRules.h"
#include "support/RunTimeError.h"

namespace t4 {

std::shared_ptr<ICategoryRules> StoredRulesReader::GetCategoryRules(IClientApp&) {
  return std::make_shared<StoredCategoryRules>(
      RunTimeError::Require(storage_.get())->OpenRuleStore());
}

std::shared_ptr<IRulesCategoryList> StoredRulesReader::GetMasterlist(IClientApp&) {
  return std::make_shared<StoredCategoryList>(
      RunTimeError::Require(storage_.get())->OpenCategoryStore());
}

}  // namespace t4
