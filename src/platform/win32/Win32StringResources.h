#pragma once

#include "support/IStringResources.h"

namespace t4::win32 {

// The message table as the string table resource of the library's module.
class Win32StringResources : public IStringResources {
 public:
  std::optional<std::u16string> Text(int32_t id) override;
};

}  // namespace t4::win32
