#pragma once

#include <cstdint>
#include <string>

namespace t4 {

// Port to the system's special folders, INI files and local date format.
// Windows answers through the shell and profile APIs, POSIX through the XDG
// folders and a reader with the same observable rules.
class IShellPort {
 public:
  virtual ~IShellPort() = default;
  // Path of special folder `csidl` (a CSIDL number; bit 0x8000 asks the
  // system to create it) without a trailing separator, or "" when the
  // system does not know it.
  virtual std::u16string SpecialFolderPath(int32_t csidl) = 0;
  // Value of `key` in `section` of the INI file `file`, or "" when the file,
  // the section or the key is missing.
  virtual std::u16string IniValue(const std::u16string& file, const std::u16string& section,
                                  const std::u16string& key) = 0;
  // The character that separates folders in a path ("\" or "/").
  virtual char16_t PathSeparator() const = 0;
  // The current local date and time, each in the system's short format,
  // joined by one blank.
  virtual std::u16string NowShortDateTime() = 0;
};

}  // namespace t4
