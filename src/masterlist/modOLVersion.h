#pragma once

#include <cstdint>
#include <string>

namespace t4::modOLVersion {

// Outlook's major version from the start of its Version text, compared
// exactly: "8." 8, "9." 9, "10" 10, "11" 11, "12" 12; anything else
// (later versions, texts shorter than two characters) 0, unsupported.
int32_t VersionFromText(const std::u16string& version);
// Stores the major version of `version` as the process-wide value.
void SetOutlookVersionFromText(const std::u16string& version);
// The stored major version: 0, 8, 9, 10, 11 or 12.
int32_t OutlookVersion();

}  // namespace t4::modOLVersion
