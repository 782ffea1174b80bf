#pragma once

#include "masterlist/MasterlistString.h"

namespace t4 {

// The master list of Outlook under Office 8.0: a string value.
class Masterlist97 : public MasterlistString {
 public:
  explicit Masterlist97(std::shared_ptr<IRegistryAccess> registry)
      : MasterlistString(std::move(registry), u"8.0") {}
};

}  // namespace t4
