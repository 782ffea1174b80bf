#pragma once

#include <memory>

#include "support/IRulesReader.h"

namespace t4 {

// Port that creates the rules component (by its class identifier on
// Windows).
class IRulesLibrary {
 public:
  virtual ~IRulesLibrary() = default;
  virtual std::shared_ptr<IRulesReader> CreateRulesReader() = 0;
};

}  // namespace t4
