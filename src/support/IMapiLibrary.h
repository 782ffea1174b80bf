#pragma once

#include <memory>

#include "support/IMapiSession.h"

namespace t4 {

// Port to the MAPI library: the objects it creates by programmatic
// identifier.
class IMapiLibrary {
 public:
  virtual ~IMapiLibrary() = default;
  // A new, not yet logged-on session ("dimdo.dimdosession").
  virtual std::shared_ptr<IMapiSession> CreateSession() = 0;
};

}  // namespace t4
