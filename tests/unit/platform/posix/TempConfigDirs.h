#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace t4::test {

// Points the POSIX special folders at fresh temporary directories for the
// lifetime of the object (XDG_CONFIG_DIRS for all users, XDG_CONFIG_HOME for
// the user) and puts the process-wide values back to their start, so tests
// neither see nor touch the machine's real configuration.
class TempConfigDirs {
 public:
  TempConfigDirs();
  ~TempConfigDirs();
  TempConfigDirs(const TempConfigDirs&) = delete;
  TempConfigDirs& operator=(const TempConfigDirs&) = delete;

  const std::string& CommonDir() const { return common_; }
  const std::string& UserDir() const { return user_; }
  // Writes settings.ini (raw bytes) into the all-users product folder.
  void WriteSettings(const std::string& bytes) const;
  // Writes a file with raw bytes, creating nothing but the file.
  static void WriteFile(const std::string& path, const std::string& bytes);
  // Sets (or, with nullptr, removes) an environment variable until the
  // object ends; the value before the first change comes back then.
  void SetEnv(const std::string& name, const char* value);
  // A fresh profile folder below the temporary root (not created), chosen
  // through TANDREL4_PROFILE_DIR.
  std::string UseProfile(const std::string& name = "profile");

 private:
  std::string root_;
  std::string common_;
  std::string user_;
  std::string oldDirs_;
  std::string oldHome_;
  bool hadDirs_ = false;
  bool hadHome_ = false;
  // Variables SetEnv changed, with their values before (nullopt: unset).
  std::vector<std::pair<std::string, std::optional<std::string>>> saved_;
};

}  // namespace t4::test
