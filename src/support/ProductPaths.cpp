#include "support/ProductPaths.h"

#include "support/SpecialFolders.h"

namespace t4 {

std::u16string ProductPaths::AppData() {
  return SpecialFolders::ProductFolder(SpecialFolders::kCsidlAppData);
}

std::u16string ProductPaths::RegistryKey() {
  return u"Software\\Quorvane\\Kolvane\\Settings\\";
}

}  // namespace t4
