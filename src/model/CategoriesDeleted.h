#pragma once

#include <string>
#include <vector>

#include "support/ArrayGrowth.h"

namespace t4 {

// Outlook 2007 identifiers of categories deleted or taken out of the master
// list since the last save, each written as "<id>;;;" so the save can tell
// the store to remove them.
class CategoriesDeleted {
 public:
  CategoriesDeleted() { Clear(); }
  // Ignores an empty identifier; no duplicate test.
  void Add(const std::u16string& categoryId);
  // Empty again, with room for 50 entries.
  void Clear();
  // The entries joined by ";", "" when there is none.
  std::u16string ToString();
  size_t Size() const {
    return redim_.HasItems() ? static_cast<size_t>(redim_.LastIndex()) + 1 : 0;
  }

 private:
  ArrayGrowth redim_;
  std::vector<std::u16string> deleted_;
};

}  // namespace t4
