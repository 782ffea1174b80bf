#pragma once

#include "support/IMapiUtils.h"

namespace t4::posix {

// The utilities object of the profile's MAPI objects. Named properties: a
// store knows "Keywords" of PS_PUBLIC_STRINGS when its store.ini says so
// (MaildirStore::kKeywordsId); `create` makes it known. Properties of a
// folder: PR_ENTRYID, PR_DISPLAY_NAME and, on the Inbox and the root folder
// of a store with a Junk folder, PR_ADDITIONAL_REN_ENTRYIDS (five
// identifiers, the fifth that of the Junk E-mail folder, the others empty).
class MaildirUtils : public IMapiUtils {
 public:
  static constexpr uint32_t kAdditionalRenEntryIds = 0x36D81102u;
  static constexpr uint32_t kDisplayName = 0x3001001Eu;
  static constexpr uint32_t kEntryId = 0x0FFF0102u;

  // Raises MAPI_E_NOT_FOUND for a name the store does not know (and
  // `create` false), MAPI_E_NO_SUPPORT for one it cannot create or an
  // object that is no folder of these stores.
  int32_t GetIDsFromNames(IMapiProp& object, const std::u16string& guid, const std::u16string& name,
                          bool create) override;
  std::u16string HrArrToString(const std::string& bytes) override;
  // Raises MAPI_E_NOT_FOUND for a property the object does not have.
  MapiValue HrGetOneProp(IMapiProp& object, uint32_t propTag) override;
  // By the C library's time zone rules (TZ); a local time that a change to
  // daylight saving time skips is taken as mktime takes it. A date beyond
  // what the C library can convert comes back unchanged.
  double HrLocalToGMT(double localDate) override;
};

}  // namespace t4::posix
