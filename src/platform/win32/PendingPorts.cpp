// Placeholder until the MAPI session and the rules component adapters land.
#include "support/Ports.h"
#include "support/RunTimeError.h"

namespace t4 {
std::shared_ptr<IMapiLibrary> CreatePlatformMapiLibrary() {
  throw RunTimeError::NotImplemented(u"MAPI library");
}
std::shared_ptr<IRulesLibrary> CreatePlatformRulesLibrary() {
  throw RunTimeError::NotImplemented(u"rules component");
}
}  // namespace t4
