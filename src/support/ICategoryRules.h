#pragma once

#include <string>

namespace t4 {

// The Outlook 2007 rules of the default store, as far as they name
// categories (in their conditions and in their assign-to-category actions).
class ICategoryRules {
 public:
  virtual ~ICategoryRules() = default;
  // True when a rename touched a rule since the last Save.
  virtual bool Changed() = 0;
  // Writes the rules back to the store.
  virtual void Save() = 0;
  // Replaces `oldName` by `newName` in every rule's category condition and
  // assign-to-category action.
  virtual void RenameCategory(std::u16string& oldName, std::u16string& newName) = 0;
};

}  // namespace t4
