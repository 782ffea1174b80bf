#pragma once

#include <filesystem>

#include "support/IRulesLibrary.h"

namespace t4::posix {

// The rules storage of a profile folder (XmlRulesStorage), on which the
// library's own rules component works. The folder is the one given, else TANDREL4_PROFILE_DIR when
// set and not empty, else Tandrel4/profile in the per-user configuration folder (XDG_CONFIG_HOME,
// default ~/.config). The folder need not exist yet; the first write creates it.
class XmlRulesLibrary : public IRulesLibrary {
 public:
  XmlRulesLibrary();
  explicit XmlRulesLibrary(std::filesystem::path profileDir) : profileDir_(std::move(profileDir)) {}

  // The folder the environment chooses; empty when neither the variable
  // nor a configuration folder is known.
  static std::filesystem::path DefaultProfileDir();
  const std::filesystem::path& ProfileDir() const { return profileDir_; }

  // Null: this platform has no registered rules component.
  std::shared_ptr<IRulesReader> CreateRulesReader() override { return nullptr; }
  // Raises 76 (path not found) when there is no profile folder.
  std::shared_ptr<IRulesStorage> CreateRulesStorage() override;

 private:
  std::filesystem::path profileDir_;
};

}  // namespace t4::posix
