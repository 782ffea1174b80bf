#include "support/OleDate.h"

#include <cmath>
#include <cstdint>

#include "support/NumberText.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4 {

namespace {

std::u16string Padded(int64_t value, size_t width) {
  std::u16string text = Utf::Decimal(value);
  if (text.size() < width) text.insert(0, width - text.size(), u'0');
  return text;
}

// Days since 1899-12-30 to a calendar date (the proleptic Gregorian
// calendar, the days-from-civil algorithm run backwards).
void CivilFromDays(int64_t days, int64_t& year, int64_t& month, int64_t& day) {
  const int64_t z = days - 25569 + 719468;  // from 0000-03-01
  const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const int64_t doe = z - era * 146097;
  const int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const int64_t mp = (5 * doy + 2) / 153;
  day = doy - (153 * mp + 2) / 5 + 1;
  month = mp < 10 ? mp + 3 : mp - 9;
  year = yoe + era * 400 + (month <= 2 ? 1 : 0);
}

}  // namespace

std::u16string OleDate::IsoText(double oleDate) {
  if (!std::isfinite(oleDate) || std::fabs(oleDate) > 3e6)
    throw RunTimeError::Make(RunTimeError::kOverflow);
  // OLE dates before 1899-12-30 count the day backwards, the time forwards.
  double days = std::trunc(oleDate);
  const double fraction = std::fabs(oleDate - days);
  auto seconds = static_cast<int64_t>(NumberText::RoundHalfEven(fraction * 86400.0));
  auto whole = static_cast<int64_t>(days);
  if (seconds >= 86400) {
    seconds -= 86400;
    whole += oleDate < 0 ? -1 : 1;
  }
  int64_t year = 0, month = 0, day = 0;
  CivilFromDays(whole, year, month, day);
  return Padded(year, 4) + u"-" + Padded(month, 2) + u"-" + Padded(day, 2) + u"T" +
         Padded(seconds / 3600, 2) + u":" + Padded(seconds / 60 % 60, 2) + u":" +
         Padded(seconds % 60, 2);
}

}  // namespace t4
