#include "platform/posix/XmlRulesLibrary.h"
#include "platform/common/DefaultPorts.h"

#include <cstdlib>

#include "platform/posix/PosixShellPort.h"
#include "platform/posix/XmlRulesStorage.h"
#include "support/Ports.h"
#include "support/RunTimeError.h"
#include "support/SpecialFolders.h"
#include "support/Utf.h"

namespace t4 {

namespace posix {

XmlRulesLibrary::XmlRulesLibrary() : profileDir_(DefaultProfileDir()) {}

std::filesystem::path XmlRulesLibrary::DefaultProfileDir() {
  const char* chosen = std::getenv("TANDREL4_PROFILE_DIR");
  if (chosen != nullptr && *chosen != 0) return chosen;
  // The same per-user folder the shell port hands out, without going
  // through the port a test may have replaced.
  const std::u16string config = PosixShellPort().SpecialFolderPath(SpecialFolders::kCsidlAppData);
  if (config.empty()) return {};
  return std::filesystem::path(Utf::ToUtf8(config)) / "Tandrel4" / "profile";
}

std::shared_ptr<IRulesStorage> XmlRulesLibrary::CreateRulesStorage() {
  if (profileDir_.empty()) throw RunTimeError::Make(RunTimeError::kPathNotFound);
  return std::make_shared<XmlRulesStorage>(profileDir_);
}

}  // namespace posix

std::shared_ptr<IRulesLibrary> CreatePlatformRulesLibrary() {
  return std::make_shared<posix::XmlRulesLibrary>();
}

}  // namespace t4
