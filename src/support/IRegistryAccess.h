#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace t4 {

// A registry value's data: text (a string value) or bytes (a binary value).
using RegistryData = std::variant<std::u16string, std::vector<uint8_t>>;

// Port to the current user's registry (HKEY_CURRENT_USER), the three
// operations the master-list stores need. Keys are paths below the root
// with "\" between the parts.
class IRegistryAccess {
 public:
  virtual ~IRegistryAccess() = default;
  // The value's data, or nothing when the value or its key does not exist.
  virtual std::optional<RegistryData> ReadValue(const std::u16string& key,
                                                const std::u16string& name) = 0;
  // Creates or replaces the value (and creates a missing key); text makes
  // a string value, bytes a binary value.
  virtual void WriteValue(const std::u16string& key, const std::u16string& name,
                          const RegistryData& data) = 0;
  // Removes the value; a missing one is no error.
  virtual void DeleteValue(const std::u16string& key, const std::u16string& name) = 0;
};

}  // namespace t4
