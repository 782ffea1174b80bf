#pragma once

#include <string>

namespace t4 {

// Dates as OLE automation keeps them: days since 1899-12-30, the time of
// day as the fraction (before that day the day counts backwards and the
// time forwards).
class OleDate {
 public:
  // "yyyy-mm-ddThh:nn:ss" in the proleptic Gregorian calendar, to the
  // nearest second (half to even). Run-time error 6 (overflow) for a value
  // that is no date (not finite, or beyond 3,000,000 days).
  static std::u16string IsoText(double oleDate);
};

}  // namespace t4
