#pragma once

#include <memory>

#include "support/IRulesReader.h"
#include "support/IRulesStorage.h"

namespace t4 {

// Port to the Outlook 2007 rules component. A platform either has the
// component registered as one of its own (Windows: created by its class
// identifier) or only keeps the component's data, on which the library's
// own component works (see RulesComponent).
class IRulesLibrary {
 public:
  virtual ~IRulesLibrary() = default;
  // The registered component; null on a platform that only keeps storage.
  virtual std::shared_ptr<IRulesReader> CreateRulesReader() = 0;
  // The storage of a platform without a registered component; null where
  // there is a component.
  virtual std::shared_ptr<IRulesStorage> CreateRulesStorage() { return nullptr; }
};

}  // namespace t4
