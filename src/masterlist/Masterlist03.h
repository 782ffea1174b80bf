#pragma once

#include "masterlist/MasterlistBinary.h"

namespace t4 {

// The master list of Outlook 2003 (Office 11.0): a binary value. It also
// reads the registry script form back into list text.
class Masterlist03 : public MasterlistBinary {
 public:
  explicit Masterlist03(std::shared_ptr<IRegistryAccess> registry)
      : MasterlistBinary(std::move(registry), u"11.0", u"Masterlist03", false) {}

  using MasterlistBinary::Convert;
  // "41,00,3b,00,00,00" back to "A;": each part a hexadecimal byte, the last
  // two bytes (the terminator) dropped. A part that is no byte, or fewer
  // than three parts, is an error.
  static std::u16string ConvertFromHex(const std::u16string& hex);
};

}  // namespace t4
