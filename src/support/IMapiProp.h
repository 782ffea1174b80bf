#pragma once

namespace t4 {

// A raw MAPI object (a folder's or store's MAPIOBJECT, the raw contents
// table of a folder's items) that the library only passes from one object
// of the MAPI library to another. Each platform knows what it really is.
class IMapiProp {
 public:
  virtual ~IMapiProp() = default;
};

}  // namespace t4
