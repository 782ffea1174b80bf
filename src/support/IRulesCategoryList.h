#pragma once

#include <string>

namespace t4 {

// Outlook 2007's master category list as the rules component hands it out.
// All texts are entry lists: "CategoryID;Name;Color;ShortCut" groups joined
// by ";".
class IRulesCategoryList {
 public:
  virtual ~IRulesCategoryList() = default;
  // Every category of the list, "" when there is none.
  virtual std::u16string ReadCategories() = 0;
  // Creates (empty identifier) or updates (by identifier) each group with a
  // name and deletes each group without one; hands back in `list` the
  // "CategoryID;Name" pairs of the categories created or updated.
  virtual void WriteCategories(std::u16string& list) = 0;
  // The type prefix a registry script line would carry.
  virtual std::u16string Format() = 0;
};

}  // namespace t4
