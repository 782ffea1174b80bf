#include "masterlist/modOLVersion.h"

#include "support/ProcessValues.h"

namespace t4::modOLVersion {

int32_t VersionFromText(const std::u16string& version) {
  if (version.size() < 2) return 0;
  const std::u16string head = version.substr(0, 2);
  if (head == u"8.") return 8;
  if (head == u"9.") return 9;
  if (head == u"10") return 10;
  if (head == u"11") return 11;
  if (head == u"12") return 12;
  return 0;
}

void SetOutlookVersionFromText(const std::u16string& version) {
  ProcessValues::SetOutlookVersion(VersionFromText(version));
}

int32_t OutlookVersion() {
  return ProcessValues::OutlookVersion();
}

}  // namespace t4::modOLVersion
