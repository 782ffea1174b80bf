#pragma once

#include <memory>

#include "support/IRulesLibrary.h"
#include "support/IRulesReader.h"

namespace t4 {

// Creates the Outlook 2007 rules component the platform offers: its
// registered component, else the library's own over the platform's
// storage. Errors of the platform (a class not registered, no profile
// folder) reach the caller.
class RulesComponent {
 public:
  static std::shared_ptr<IRulesReader> Create(IRulesLibrary& library);
};

}  // namespace t4
