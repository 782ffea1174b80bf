#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace t4 {

// Port to the library's message table: the string table resource of the
// DLL on Windows, the table compiled into the core elsewhere.
class IStringResources {
 public:
  virtual ~IStringResources() = default;
  // The text stored under `id`, or nothing when the table has no such id.
  virtual std::optional<std::u16string> Text(int32_t id) = 0;
};

}  // namespace t4
