#pragma once

#include <memory>
#include <string>

#include "support/ICategoryRules.h"
#include "support/IRuleStore.h"

namespace t4 {

// The category-rules object of the rules component over a rule store.
class StoredCategoryRules : public ICategoryRules {
 public:
  explicit StoredCategoryRules(std::shared_ptr<IRuleStore> store) : store_(std::move(store)) {}

  bool Changed() override { return changed_; }
  // Saves the rules and clears the changed mark.
  void Save() override;
  // Outlook compares category names without regard to letter case, so a
  // rule's "Work" is renamed along with "work". A rule whose lists do not
  // hold the old name is left untouched.
  void RenameCategory(std::u16string& oldName, std::u16string& newName) override;

 private:
  std::shared_ptr<IRuleStore> store_;
  bool changed_ = false;
};

}  // namespace t4
