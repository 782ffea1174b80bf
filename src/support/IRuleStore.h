#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace t4 {

// The rules of Outlook 2007's default store, reduced to the category names
// they hold: each rule's category condition and its assign-to-category
// action. Rules are numbered from 0.
class IRuleStore {
 public:
  virtual ~IRuleStore() = default;
  virtual int32_t Count() = 0;
  // The names of rule `index`'s condition (`assign` false) or action
  // (`assign` true); empty when the rule has none.
  virtual std::vector<std::u16string> Categories(int32_t index, bool assign) = 0;
  virtual void SetCategories(int32_t index, bool assign,
                             const std::vector<std::u16string>& names) = 0;
  // Writes the rules back.
  virtual void Save() = 0;
};

}  // namespace t4
