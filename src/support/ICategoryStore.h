#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace t4 {

// One category of Outlook 2007's own list, in the library's numbering
// (colour -1 none, 0 to 24; shortcut 0 none, 1 to 11 for Ctrl+F2 to
// Ctrl+F12). Backends convert to and from the client's numbering.
struct StoredCategory {
  std::u16string id;
  std::u16string name;
  int32_t color = -1;
  int32_t shortCut = 0;
};

// Where the rules component keeps Outlook 2007's category list: the
// client's own category collection on Windows, an XML file elsewhere.
class ICategoryStore {
 public:
  virtual ~ICategoryStore() = default;
  // Every category, in the store's order.
  virtual std::vector<StoredCategory> List() = 0;
  // Creates a category and returns the identifier the store gave it.
  virtual std::u16string Add(const StoredCategory& category) = 0;
  // Updates name, colour and shortcut of the category with `category.id`.
  virtual void Update(const StoredCategory& category) = 0;
  // Removes the category with this identifier.
  virtual void Remove(const std::u16string& id) = 0;
  // Makes the changes of one WriteCategories call durable.
  virtual void Commit() {}
};

}  // namespace t4
