#include "platform/posix/TempConfigDirs.h"

#include <stdlib.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "support/ProcessValues.h"

namespace t4::test {

TempConfigDirs::TempConfigDirs() {
  char pattern[] = "/tmp/tandrel4-test-XXXXXX";
  if (mkdtemp(pattern) == nullptr) throw std::runtime_error("mkdtemp failed");
  root_ = pattern;
  common_ = root_ + "/common";
  user_ = root_ + "/user";
  std::filesystem::create_directories(common_);
  std::filesystem::create_directories(user_);
  if (const char* v = getenv("XDG_CONFIG_DIRS")) hadDirs_ = true, oldDirs_ = v;
  if (const char* v = getenv("XDG_CONFIG_HOME")) hadHome_ = true, oldHome_ = v;
  setenv("XDG_CONFIG_DIRS", (common_ + ":/etc/xdg").c_str(), 1);
  setenv("XDG_CONFIG_HOME", user_.c_str(), 1);
  ProcessValues::Reset();
}

TempConfigDirs::~TempConfigDirs() {
  for (auto it = saved_.rbegin(); it != saved_.rend(); ++it) {
    if (it->second) {
      setenv(it->first.c_str(), it->second->c_str(), 1);
    } else {
      unsetenv(it->first.c_str());
    }
  }
  if (hadDirs_)
    setenv("XDG_CONFIG_DIRS", oldDirs_.c_str(), 1);
  else
    unsetenv("XDG_CONFIG_DIRS");
  if (hadHome_)
    setenv("XDG_CONFIG_HOME", oldHome_.c_str(), 1);
  else
    unsetenv("XDG_CONFIG_HOME");
  std::error_code ignored;
  std::filesystem::remove_all(root_, ignored);
  ProcessValues::Reset();
}

void TempConfigDirs::WriteSettings(const std::string& bytes) const {
  const std::string folder = common_ + "/Quorvane/Kolvane";
  std::filesystem::create_directories(folder);
  WriteFile(folder + "/settings.ini", bytes);
}

void TempConfigDirs::SetEnv(const std::string& name, const char* value) {
  bool seen = false;
  for (const auto& entry : saved_) seen = seen || entry.first == name;
  if (!seen) {
    const char* old = getenv(name.c_str());
    saved_.emplace_back(name, old != nullptr ? std::optional<std::string>(old) : std::nullopt);
  }
  if (value != nullptr) {
    setenv(name.c_str(), value, 1);
  } else {
    unsetenv(name.c_str());
  }
}

std::string TempConfigDirs::UseProfile(const std::string& name) {
  const std::string dir = root_ + "/" + name;
  SetEnv("TANDREL4_PROFILE_DIR", dir.c_str());
  return dir;
}

void TempConfigDirs::WriteFile(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << bytes;
}

}  // namespace t4::test
