#include "rules/StoredCategoryRules.h"

#include "support/RunTimeError.h"
#include "support/TextCase.h"

namespace t4 {

void StoredCategoryRules::Save() {
  RunTimeError::Require(store_.get())->Save();
  changed_ = false;
}

void StoredCategoryRules::RenameCategory(std::u16string& oldName, std::u16string& newName) {
  IRuleStore& store = *RunTimeError::Require(store_.get());
  const std::u16string lower = TextCase::Lower(oldName);
  const int32_t count = store.Count();
  for (int32_t rule = 0; rule < count; ++rule) {
    for (bool assign : {false, true}) {
      auto names = store.Categories(rule, assign);
      bool touched = false;
      for (auto& name : names) {
        if (TextCase::Lower(name) == lower && name != newName) {
          name = newName;
          touched = true;
        }
      }
      if (!touched) continue;
      store.SetCategories(rule, assign, names);
      changed_ = true;
    }
  }
}

}  // namespace t4
