#pragma once

#include <cstdint>
#include <string>

#include "support/Error.h"

namespace t4::posix {

// The MAPI errors the profile's MAPI objects raise, with the numbers
// (HRESULTs) MAPI gives them, so a host sees what the Windows MAPI library
// would report.
class MapiError {
 public:
  static constexpr int32_t kNoSupport = static_cast<int32_t>(0x80040102u);
  static constexpr int32_t kInvalidEntryId = static_cast<int32_t>(0x80040107u);
  static constexpr int32_t kNotFound = static_cast<int32_t>(0x8004010Fu);

  // The error `code` with its MAPI name and `detail` in parentheses.
  static Error Make(int32_t code, const std::string& detail);
};

}  // namespace t4::posix
