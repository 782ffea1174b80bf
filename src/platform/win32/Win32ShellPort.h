#pragma once

#include "support/IShellPort.h"

namespace t4::win32 {

// Special folders through the shell (with the "shfolder" fallback of older
// systems), INI values through the profile API, dates in the user's format.
class Win32ShellPort : public IShellPort {
 public:
  std::u16string SpecialFolderPath(int32_t csidl) override;
  std::u16string IniValue(const std::u16string& file, const std::u16string& section,
                          const std::u16string& key) override;
  char16_t PathSeparator() const override { return u'\\'; }
  std::u16string NowShortDateTime() override;
};

}  // namespace t4::win32
