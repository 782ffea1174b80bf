#pragma once

namespace t4 {

// Port to the system clock, in the two forms the library takes time in.
class IClock {
 public:
  virtual ~IClock() = default;
  // The current local date and time as an OLE date (days since 1899-12-30,
  // the time of day as the fraction).
  virtual double Now() = 0;
  // Seconds since local midnight, with their fraction (Visual Basic's
  // Timer).
  virtual double Timer() = 0;
};

}  // namespace t4
