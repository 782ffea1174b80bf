#pragma once

#include "masterlist/MasterlistString.h"

namespace t4 {

// The master list of Outlook under Office 9.0: a string value.
class Masterlist00 : public MasterlistString {
 public:
  explicit Masterlist00(std::shared_ptr<IRegistryAccess> registry)
      : MasterlistString(std::move(registry), u"9.0") {}
};

}  // namespace t4
