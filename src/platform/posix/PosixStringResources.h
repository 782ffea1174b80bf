#pragma once

#include "support/IStringResources.h"

namespace t4 {

// The message table compiled into the core.
class PosixStringResources : public IStringResources {
 public:
  std::optional<std::u16string> Text(int32_t id) override;
};

}  // namespace t4
