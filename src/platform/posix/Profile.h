#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace t4::posix {

// A mail profile: one folder holding one user's whole mailbox setup
// (docs/profile.md). `profile.ini` names the client version and the
// stores:
//
//   [Profile]
//   Version=11.0.0.8312
//   Stores=2
//   Store1=stores/personal
//   Store2=stores/archive
//
// Store folders are relative to the profile folder (absolute ones are
// taken as they are). Next to it: registry.reg, categories.xml, rules.xml
// and the `.lock` file all writers share.
class Profile {
 public:
  // TANDREL4_PROFILE_DIR when set and not empty, else Tandrel4/profile in
  // the per-user configuration folder; empty when neither is known.
  static std::filesystem::path DefaultDir();
  // Reads profile.ini; a missing file is a profile without stores and
  // without a version.
  static Profile Load(const std::filesystem::path& dir);

  const std::filesystem::path& Dir() const { return dir_; }
  const std::u16string& Version() const { return version_; }
  const std::vector<std::filesystem::path>& StoreDirs() const { return stores_; }

 private:
  std::filesystem::path dir_;
  std::u16string version_;
  std::vector<std::filesystem::path> stores_;
};

}  // namespace t4::posix
