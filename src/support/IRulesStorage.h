#pragma once

#include <memory>

#include "support/ICategoryStore.h"
#include "support/IRuleStore.h"

namespace t4 {

// Where a platform without a rules component of its own keeps Outlook
// 2007's category list and rules; the library's own component works on it.
class IRulesStorage {
 public:
  virtual ~IRulesStorage() = default;
  // The category list as it is stored now (each call reads it afresh).
  virtual std::shared_ptr<ICategoryStore> OpenCategoryStore() = 0;
  // The rules as they are stored now.
  virtual std::shared_ptr<IRuleStore> OpenRuleStore() = 0;
};

}  // namespace t4
