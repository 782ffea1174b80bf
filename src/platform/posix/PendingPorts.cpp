// Placeholder until the registry file lands.
#include "support/Ports.h"
#include "support/RunTimeError.h"

namespace t4 {
std::shared_ptr<IRegistryAccess> CreatePlatformRegistry() {
  throw RunTimeError::NotImplemented(u"registry file");
}
}  // namespace t4
