#include "support/IniFile.h"

#include "support/Ports.h"

namespace t4::IniFile {

std::u16string GetIniValue(const std::u16string& file, const std::u16string& section,
                           const std::u16string& key) {
  try {
    return Ports::Shell().IniValue(file, section, key);
  } catch (...) {
    return u"";
  }
}

}  // namespace t4::IniFile
