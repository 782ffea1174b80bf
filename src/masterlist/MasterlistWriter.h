#pragma once

#include <functional>
#include <memory>
#include <string>

#include "masterlist/IMasterlist.h"
#include "model/Categories.h"

namespace t4 {

// Writes a collection's categories to the running Outlook's master list.
// Its steps carry the collection's own labels (Categories.ToString,
// Categories.Save): that is what the error trail names for the host.
class MasterlistWriter {
 public:
  // The master-list text of all categories, in the running version's form.
  static std::u16string ToString(const Categories& categories);
  // Opens the store with `openStore` and writes the list to it (before Outlook 2007 always; from it
  // only the changed categories and the pending deletions, when there are any, copying back the
  // identifiers Outlook gave new ones), then clears every changed mark and the pending deletions. A
  // null store fails with "object variable not set" where it would be written to.
  static void Save(const std::shared_ptr<Categories>& categories,
                   const std::function<std::shared_ptr<IMasterlist>()>& openStore);
};

}  // namespace t4
