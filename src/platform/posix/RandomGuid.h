#pragma once

#include <string>

namespace t4::posix {

// Identifiers for new categories in the form Outlook writes them: a random
// (RFC 4122 version 4) GUID in braces with upper-case hex digits, e.g.
// "{0F8C3E2A-5B7D-4C1E-9A6F-3D2B1C0E9F8A}".
class RandomGuid {
 public:
  // 122 random bits from /dev/urandom (std::random_device when that cannot
  // be read).
  static std::u16string Make();
};

}  // namespace t4::posix
