#pragma once

#include "support/IRegistryAccess.h"

namespace t4::win32 {

// HKEY_CURRENT_USER through the registry API. Text is written as REG_SZ,
// bytes as REG_BINARY; writing creates a missing key. Reading gives text for
// REG_SZ and REG_EXPAND_SZ (unexpanded), bytes for every other type.
class Win32RegistryAccess : public IRegistryAccess {
 public:
  std::optional<RegistryData> ReadValue(const std::u16string& key,
                                        const std::u16string& name) override;
  void WriteValue(const std::u16string& key, const std::u16string& name,
                  const RegistryData& data) override;
  void DeleteValue(const std::u16string& key, const std::u16string& name) override;
};

}  // namespace t4::win32
