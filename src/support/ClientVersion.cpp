#include "support/ClientVersion.h"

#include "support/ProcessValues.h"

namespace t4 {

ClientVersion ClientVersion::Current() {
  return ClientVersion(ProcessValues::OutlookVersion());
}

void ClientVersion::SelectFromText(const std::u16string& versionText) {
  ProcessValues::SetOutlookVersion(MajorFromText(versionText));
}

int32_t ClientVersion::MajorFromText(const std::u16string& versionText) {
  if (versionText.size() < 2) return 0;
  const std::u16string head = versionText.substr(0, 2);
  if (head == u"8.") return 8;
  if (head == u"9.") return 9;
  if (head == u"10") return 10;
  if (head == u"11") return 11;
  if (head == u"12") return 12;
  return 0;
}

}  // namespace t4
