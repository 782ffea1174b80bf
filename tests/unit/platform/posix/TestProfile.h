#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "ProfileGenerator.h"
#include "platform/posix/TempConfigDirs.h"
#include "support/IMapiLibrary.h"

namespace t4::test {

// A generated mail profile in a temporary folder, chosen through
// TANDREL4_PROFILE_DIR, with a short lock timeout, and the profile's MAPI
// objects to reach it.
class TestProfile {
 public:
  explicit TestProfile(tools::ProfileGenerator::Options options = {});

  const std::filesystem::path& Dir() const { return dir_; }
  TempConfigDirs& Dirs() { return dirs_; }
  IMapiLibrary& Library() { return *library_; }
  std::shared_ptr<IMapiSession> Session();
  // The store folder of store `n` (from 1).
  std::filesystem::path StoreDir(int n) const;
  // The store's entry identifier, through the session.
  std::u16string StoreId(int n);
  // All message files below `folder` (cur/ and new/), sorted.
  static std::vector<std::filesystem::path> MessageFiles(const std::filesystem::path& folder);
  static std::string Read(const std::filesystem::path& path);

 private:
  TempConfigDirs dirs_;
  std::filesystem::path dir_;
  std::shared_ptr<IMapiLibrary> library_;
};

}  // namespace t4::test
