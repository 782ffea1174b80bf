#pragma once

#include <memory>
#include <string>

#include "support/ICategoryStore.h"
#include "support/IRulesCategoryList.h"

namespace t4 {

// The master-list object of the rules component over a category store: it
// renders the store as an entry list and applies an entry list to it.
class StoredCategoryList : public IRulesCategoryList {
 public:
  explicit StoredCategoryList(std::shared_ptr<ICategoryStore> store) : store_(std::move(store)) {}

  std::u16string ReadCategories() override;
  // A group with a name updates the category with its identifier; without
  // an identifier, or with one the store does not know, it updates the
  // category of the same name (any letter case) or creates one. A group
  // without a name removes the category with its identifier. Colour -2 and
  // shortcut -2 leave the stored value as it is (none for a new category).
  // `list` comes back as the "CategoryID;Name" pairs of the named groups.
  void WriteCategories(std::u16string& list) override;
  // "": an Outlook 2007 list is no registry value and has no type prefix.
  std::u16string Format() override { return u""; }

 private:
  std::shared_ptr<ICategoryStore> store_;
};

}  // namespace t4
