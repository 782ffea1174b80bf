// Placeholder until the XML rules component lands.
#include "support/Ports.h"
#include "support/RunTimeError.h"

namespace t4 {
std::shared_ptr<IRulesLibrary> CreatePlatformRulesLibrary() {
  throw RunTimeError::NotImplemented(u"rules component");
}
}  // namespace t4
