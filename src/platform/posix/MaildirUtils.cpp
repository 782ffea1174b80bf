#include "platform/posix/MaildirUtils.h"

#include "platform/posix/MaildirEntryId.h"

#include <cmath>
#include <ctime>

#include "platform/posix/MaildirFolder.h"
#include "platform/posix/MaildirStore.h"
#include "platform/posix/MapiError.h"
#include "support/HexCodec.h"
#include "support/Utf.h"

namespace t4::posix {

namespace {

constexpr char16_t kPublicStrings[] = u"{00020329-0000-0000-C000-000000000046}";
constexpr double kUnixEpochAsOleDate = 25569.0;  // 1970-01-01 in days since 1899-12-30
constexpr double kSecondsPerDay = 86400.0;

// OLE dates before 1899-12-30 count the day backwards but the time of day
// forwards (-1.25 is 1899-12-29 06:00); these two give and take a plain
// count of days.
double LinearFromOle(double date) {
  if (date >= 0) return date;
  const double days = std::trunc(date);
  return days + (days - date);
}
double OleFromLinear(double linear) {
  if (linear >= 0) return linear;
  const double days = std::floor(linear);
  return days - (linear - days);
}

MaildirFolder& FolderOf(IMapiProp& object) {
  auto* folder = dynamic_cast<MaildirFolder*>(&object);
  if (folder == nullptr) throw MapiError::Make(MapiError::kNoSupport, "not a folder");
  return *folder;
}

bool SameGuid(const std::u16string& a, std::u16string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    char16_t x = a[i], y = b[i];
    if (x >= u'a' && x <= u'f') x = static_cast<char16_t>(x - u'a' + u'A');
    if (y >= u'a' && y <= u'f') y = static_cast<char16_t>(y - u'a' + u'A');
    if (x != y) return false;
  }
  return true;
}

}  // namespace

int32_t MaildirUtils::GetIDsFromNames(IMapiProp& object, const std::u16string& guid,
                                      const std::u16string& name, bool create) {
  MaildirFolder& folder = FolderOf(object);
  const std::shared_ptr<MaildirStore>& store = folder.OwnStore();
  if (!SameGuid(guid, kPublicStrings) || name != u"Keywords") {
    throw MapiError::Make(create ? MapiError::kNoSupport : MapiError::kNotFound,
                          "named property " + Utf::ToUtf8(name));
  }
  if (!store->HasKeywords()) {
    if (!create) throw MapiError::Make(MapiError::kNotFound, "named property Keywords");
    store->AddKeywordsProperty();
  }
  return static_cast<int32_t>(MaildirStore::kKeywordsId);
}

std::u16string MaildirUtils::HrArrToString(const std::string& bytes) {
  return HexCodec::Encode(bytes);
}

double MaildirUtils::HrLocalToGMT(double localDate) {
  // The local wall-clock time read as if it were universal time gives its
  // fields; mktime then applies the C library's time zone rules (TZ, the
  // daylight saving time of that date) to find the real instant.
  const double local = (LinearFromOle(localDate) - kUnixEpochAsOleDate) * kSecondsPerDay;
  const double whole = std::floor(local);
  if (!std::isfinite(whole) || whole < -1e15 || whole > 1e15) return localDate;
  const auto seconds = static_cast<time_t>(whole);
  std::tm fields{};
  if (::gmtime_r(&seconds, &fields) == nullptr) return localDate;
  fields.tm_isdst = -1;
  const time_t universal = ::mktime(&fields);
  if (universal == static_cast<time_t>(-1) && !(fields.tm_year == 69 && fields.tm_mon == 11))
    return localDate;
  const double linear =
      (static_cast<double>(universal) + (local - whole)) / kSecondsPerDay + kUnixEpochAsOleDate;
  return OleFromLinear(linear);
}

MapiValue MaildirUtils::HrGetOneProp(IMapiProp& object, uint32_t propTag) {
  MaildirFolder& folder = FolderOf(object);
  const std::shared_ptr<MaildirStore>& store = folder.OwnStore();
  if (propTag == kEntryId) return MapiValue::Binary(folder.EntryIdBytes());
  if (propTag == kDisplayName) return MapiValue::Text(folder.Name());
  if (propTag == kAdditionalRenEntryIds && !store->JunkFolder().empty() &&
      (folder.FolderName().empty() || folder.FolderName() == MaildirStore::kRootName)) {
    std::vector<std::string> ids(5);
    ids[4] = MaildirEntryId::Folder(store->Uid(), MaildirEntryId::FolderKey(store->JunkFolder()));
    return MapiValue::BinaryArray(std::move(ids));
  }
  throw MapiError::Make(
      MapiError::kNotFound,
      "property " + Utf::ToUtf8(HrArrToString(std::string{
                        static_cast<char>(propTag >> 24), static_cast<char>(propTag >> 16),
                        static_cast<char>(propTag >> 8), static_cast<char>(propTag)})));
}

}  // namespace t4::posix
