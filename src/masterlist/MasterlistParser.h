#pragma once

#include <memory>
#include <string>
#include <vector>

#include "model/Categories.h"

namespace t4 {

// Turns stored master-list text into categories, and copies the identifiers
// Outlook 2007 assigned back onto the categories after a save.
class MasterlistParser {
 public:
  // Adds the default category (empty name, not in the master list) and then
  // every category of `list`: a name list before Outlook 2007, an entry list
  // from it. An error stops the read where it arose; what was added stays.
  void ReadMasterlist(const std::shared_ptr<Categories>& categories, const std::u16string& list);
  // For each "CategoryID;Name" pair: the category of that name gets the
  // identifier when it has none yet. Errors are skipped pair by pair.
  void UpdateCategoryIDs(const std::shared_ptr<Categories>& categories,
                         const std::u16string& pairs);

  // `text` split at every `separator`, empty elements kept.
  static std::vector<std::u16string> Split(const std::u16string& text, char16_t separator = u';');
  // The longest leading decimal number of a list field (leading blanks
  // skipped), rounded half to even; 0 when there is none.
  static int32_t FieldNumber(const std::u16string& field);

 private:
  void ParseNameList(const std::u16string& list);
  void ParseEntryList(const std::u16string& list);

  std::shared_ptr<Categories> categories_;
};

}  // namespace t4
