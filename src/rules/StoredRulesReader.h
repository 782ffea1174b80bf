#pragma once

#include <memory>

#include "support/IRulesReader.h"
#include "support/IRulesStorage.h"

namespace t4 {

// The library's own rules component over a platform's storage: the master
// list and the rules of the one profile the storage holds, whatever Outlook
// object is passed in.
class StoredRulesReader : public IRulesReader {
 public:
  explicit StoredRulesReader(std::shared_ptr<IRulesStorage> storage)
      : storage_(std::move(storage)) {}

  // A rules object over the rules as stored now.
  std::shared_ptr<ICategoryRules> GetCategoryRules(IClientApp& outlook) override;
  // A master-list object over the category list as stored now; each call
  // reads it afresh.
  std::shared_ptr<IRulesCategoryList> GetMasterlist(IClientApp& outlook) override;

 private:
  std::shared_ptr<IRulesStorage> storage_;
};

}  // namespace t4
