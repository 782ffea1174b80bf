#pragma once

#include "masterlist/MasterlistBinary.h"

namespace t4 {

// The master list of Outlook 2002 (Office 10.0): a binary value, with the
// narrower padding of its registry script form.
class Masterlist02 : public MasterlistBinary {
 public:
  explicit Masterlist02(std::shared_ptr<IRegistryAccess> registry)
      : MasterlistBinary(std::move(registry), u"10.0", u"Masterlist02", true) {}
};

}  // namespace t4
