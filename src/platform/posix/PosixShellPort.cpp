#include "platform/posix/PosixShellPort.h"
#include "platform/common/DefaultPorts.h"

#include <locale.h>
#include <time.h>

#include <cstdlib>
#include <string>

#include "platform/posix/Directories.h"
#include "platform/posix/FileBytes.h"
#include "platform/posix/IniFileReader.h"
#include "support/Ports.h"
#include "support/SpecialFolders.h"
#include "support/Utf.h"

namespace t4 {

namespace {

std::string Env(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? std::string(value) : std::string();
}

// XDG variables must hold absolute paths; anything else is ignored.
std::string AbsoluteOr(std::string value, std::string fallback) {
  return !value.empty() && value.front() == '/' ? value : fallback;
}

std::string FolderFor(int32_t csidl) {
  switch (csidl) {
    case SpecialFolders::kCsidlCommonAppData: {
      std::string dirs = Env("XDG_CONFIG_DIRS");
      const std::string first = dirs.substr(0, dirs.find(':'));
      return AbsoluteOr(first, "/etc/xdg");
    }
    case SpecialFolders::kCsidlAppData: {
      const std::string home = Env("HOME");
      return AbsoluteOr(Env("XDG_CONFIG_HOME"), home.empty() ? "" : home + "/.config");
    }
    default:
      return "";
  }
}

}  // namespace

std::u16string PosixShellPort::SpecialFolderPath(int32_t csidl) {
  const bool create = (csidl & SpecialFolders::kCsidlFlagCreate) != 0;
  std::string path = FolderFor(csidl & ~SpecialFolders::kCsidlFlagCreate);
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  if (path.empty()) return u"";
  // Shared folders such as ~/.config: readable by all, as they usually are.
  if (create) posix::Directories::Make(path, 0755);
  return Utf::FromUtf8(path);
}

std::u16string PosixShellPort::IniValue(const std::u16string& file, const std::u16string& section,
                                        const std::u16string& key) {
  const std::string bytes = posix::FileBytes::ReadOrEmpty(Utf::ToUtf8(file));
  return IniFileReader::Lookup(IniFileReader::Decode(bytes), section, key);
}

std::u16string PosixShellPort::NowShortDateTime() {
  const time_t now = time(nullptr);
  struct tm local {};
  localtime_r(&now, &local);
  // The user's own LC_TIME, without touching the process's global locale.
  locale_t user = newlocale(LC_TIME_MASK, "", static_cast<locale_t>(0));
  if (user == static_cast<locale_t>(0))
    user = newlocale(LC_TIME_MASK, "C", static_cast<locale_t>(0));
  char date[128] = {};
  char clock[128] = {};
  strftime_l(date, sizeof date, "%x", &local, user);
  strftime_l(clock, sizeof clock, "%X", &local, user);
  freelocale(user);
  return Utf::FromUtf8(std::string(date) + " " + clock);
}

std::shared_ptr<IShellPort> CreatePlatformShellPort() {
  return std::make_shared<PosixShellPort>();
}

}  // namespace t4
