#pragma once

#include <string>

namespace t4::IniFile {

// The value of `key` in `section` of INI file `file`, or "" when the key,
// the section or the file is missing. Never throws.
std::u16string GetIniValue(const std::u16string& file, const std::u16string& section,
                           const std::u16string& key);

}  // namespace t4::IniFile
