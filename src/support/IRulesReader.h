#pragma once

#include <memory>

#include "support/ICategoryRules.h"
#include "support/IClientApp.h"
#include "support/IRulesCategoryList.h"

namespace t4 {

// The Outlook 2007 rules component: it hands out the category rules and the
// master category list of the Outlook instance it is given.
class IRulesReader {
 public:
  virtual ~IRulesReader() = default;
  virtual std::shared_ptr<ICategoryRules> GetCategoryRules(IClientApp& outlook) = 0;
  virtual std::shared_ptr<IRulesCategoryList> GetMasterlist(IClientApp& outlook) = 0;
};

}  // namespace t4
