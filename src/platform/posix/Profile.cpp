#include "platform/posix/Profile.h"

#include "platform/posix/FileBytes.h"
#include "platform/posix/IniFileReader.h"
#include "platform/posix/XmlRulesLibrary.h"
#include "support/Utf.h"

namespace t4::posix {

std::filesystem::path Profile::DefaultDir() {
  return XmlRulesLibrary::DefaultProfileDir();
}

Profile Profile::Load(const std::filesystem::path& dir) {
  Profile profile;
  profile.dir_ = dir;
  const std::u16string text = IniFileReader::Decode(FileBytes::ReadOrEmpty(dir / "profile.ini"));
  profile.version_ = IniFileReader::Lookup(text, u"Profile", u"Version");
  const std::string count = Utf::ToUtf8(IniFileReader::Lookup(text, u"Profile", u"Stores"));
  const int stores = std::atoi(count.c_str());
  for (int i = 1; i <= stores && i <= 1000; ++i) {
    const std::u16string entry =
        IniFileReader::Lookup(text, u"Profile", u"Store" + Utf::Decimal(i));
    if (entry.empty()) continue;
    const std::filesystem::path path(Utf::ToUtf8(entry));
    profile.stores_.push_back(path.is_absolute() ? path : dir / path);
  }
  return profile;
}

}  // namespace t4::posix
