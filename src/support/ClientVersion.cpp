#include "support/ClientVersion.h"

#include "support/ProcessValues.h"

namespace t4 {

namespace {

constexpr int32_t kMajors[] = {0, 8, 9, 10, 11, 12};

}  // namespace

const ClientVersion& ClientVersion::Current() {
  static const ClientVersion kVersions[] = {ClientVersion(0),  ClientVersion(8),
                                            ClientVersion(9),  ClientVersion(10),
                                            ClientVersion(11), ClientVersion(12)};
  const int32_t major = ProcessValues::OutlookVersion();
  for (size_t i = 0; i < std::size(kMajors); ++i) {
    if (kMajors[i] == major) return kVersions[i];
  }
  return kVersions[0];
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
