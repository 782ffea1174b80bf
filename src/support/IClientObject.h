#pragma once

namespace t4 {

// An object of the client application (an Outlook item) that the library
// hands on to its host unchanged. Each platform knows what it really is.
class IClientObject {
 public:
  virtual ~IClientObject() = default;
};

}  // namespace t4
