#pragma once

#include <string>

namespace t4 {

// One message opened through its store, for writing its categories back.
class IMapiMessage {
 public:
  virtual ~IMapiMessage() = default;
  // The message's categories text ("Categories"): names joined by ";".
  virtual std::u16string Categories() = 0;
  virtual void SetCategories(const std::u16string& categories) = 0;
  // Writes the changed properties to the store ("Save").
  virtual void Save() = 0;
};

}  // namespace t4
