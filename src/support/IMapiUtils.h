#pragma once

#include <cstdint>
#include <string>

#include "support/IMapiProp.h"
#include "support/MapiValue.h"

namespace t4 {

// The MAPI utilities object ("dimdo.sfUtils").
class IMapiUtils {
 public:
  virtual ~IMapiUtils() = default;
  // The property tag (type part 0) of a named property of `object`'s store
  // ("GetIDsFromNames"); throws when the name is not known there and
  // `create` is false.
  virtual int32_t GetIDsFromNames(IMapiProp& object, const std::u16string& guid,
                                  const std::u16string& name, bool create) = 0;
  // Binary data as upper-case hexadecimal text ("HrArrToString").
  virtual std::u16string HrArrToString(const std::string& bytes) = 0;
  // One property of `object` ("HrGetOneProp"); throws when it has none.
  virtual MapiValue HrGetOneProp(IMapiProp& object, uint32_t propTag) = 0;
  // A local date and time as universal time, both OLE dates
  // ("HrLocalToGMT"), by the system's time zone rules for that date.
  virtual double HrLocalToGMT(double localDate) = 0;
};

}  // namespace t4
