// Placeholder until the registry file and the XML rules component land.
#include "support/Ports.h"
#include "support/RunTimeError.h"

namespace t4 {
std::shared_ptr<IRegistryAccess> CreatePlatformRegistry() {
  throw RunTimeError::NotImplemented(u"registry file");
}
std::shared_ptr<IRulesLibrary> CreatePlatformRulesLibrary() {
  throw RunTimeError::NotImplemented(u"rules component");
}
}  // namespace t4
