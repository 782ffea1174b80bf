#pragma once

#include <string>

namespace t4 {

// Where the product keeps the current user's data and settings. The
// all-users settings folder is SpecialFolders::GetSettingsPath.
class ProductPaths {
 public:
  // The per-user product folder: the user's application-data folder, then
  // "Quorvane", then "Kolvane", ending in a separator.
  static std::u16string AppData();
  // The product's settings key below HKEY_CURRENT_USER, ending in a
  // backslash.
  static std::u16string RegistryKey();
};

}  // namespace t4
