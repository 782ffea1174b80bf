#include "support/SpecialFolders.h"

#include "support/Ports.h"

namespace t4::SpecialFolders {

std::u16string GetSpecialFolder(int32_t folder, bool create) {
  if (create) folder |= kCsidlFlagCreate;
  try {
    return Ports::Shell().SpecialFolderPath(folder);
  } catch (...) {
    return u"";
  }
}

std::u16string ProductFolder(int32_t csidl) {
  const char16_t sep = Ports::Shell().PathSeparator();
  std::u16string path = GetSpecialFolder(csidl, false);
  AddBackslash(path);
  return path + u"Quorvane" + sep + u"Kolvane" + sep;
}

std::u16string GetSettingsPath() {
  return ProductFolder(kCsidlCommonAppData);
}

void AddBackslash(std::u16string& path) {
  const char16_t sep = Ports::Shell().PathSeparator();
  if (!path.empty() && path.back() != sep) path += sep;
}

}  // namespace t4::SpecialFolders
