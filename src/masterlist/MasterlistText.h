#pragma once

#include <string>

#include "model/Categories.h"

namespace t4 {

// Renders the categories as the master-list text a store writes: before
// Outlook 2007 the names of the master-list categories, closed by ";"
// ("Business;Private;"); from Outlook 2007 the changed master-list
// categories as "CategoryID;Name;Color;ShortCut" groups joined by ";".
// Nothing is quoted: a ";" inside a name splits it when read back.
class MasterlistText {
 public:
  // `categories` is the complete, unfiltered list in collection order.
  static std::u16string CategoriesToString(const Categories::Collection& categories);

 private:
  static std::u16string NamesToString(const Categories::Collection& categories);
  static std::u16string EntriesToString(const Categories::Collection& categories);
};

}  // namespace t4
