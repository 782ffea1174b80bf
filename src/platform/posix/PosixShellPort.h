#pragma once

#include "support/IShellPort.h"

namespace t4 {

// Special folders and INI files on POSIX. The all-users application-data
// folder is the first entry of XDG_CONFIG_DIRS (default /etc/xdg), the
// per-user one XDG_CONFIG_HOME (default ~/.config); no other folder is known.
class PosixShellPort : public IShellPort {
 public:
  std::u16string SpecialFolderPath(int32_t csidl) override;
  std::u16string IniValue(const std::u16string& file, const std::u16string& section,
                          const std::u16string& key) override;
  char16_t PathSeparator() const override { return u'/'; }
  std::u16string NowShortDateTime() override;
};

}  // namespace t4
