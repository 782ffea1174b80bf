#pragma once

#include <cstdint>
#include <string>

namespace t4::SpecialFolders {

constexpr int32_t kCsidlAppData = 26;        // the user's application data
constexpr int32_t kCsidlCommonAppData = 35;  // application data of all users
constexpr int32_t kCsidlFlagCreate = 0x8000;

// Path of a special folder without a trailing separator, or "" when the
// system cannot find it. `create` asks the system to create it.
std::u16string GetSpecialFolder(int32_t folder, bool create);
// The settings folder: the all-users application-data folder, then
// "Quorvane", then "Kolvane", ending in a separator.
std::u16string GetSettingsPath();
// The product folder below special folder `csidl`, ending in a separator.
std::u16string ProductFolder(int32_t csidl);
// Appends the path separator to a non-empty path that does not end in one;
// an empty path stays empty.
void AddBackslash(std::u16string& path);

}  // namespace t4::SpecialFolders
