#pragma once

#include <cstdint>
#include <string>

namespace t4 {

// The child side of the object model's weak back-references. Owners call
// Init right after creating a child and ResetParentPtr before letting it go.
// The 32-bit parent value is a handle of the process-wide HandleTable, never
// an address: an unknown handle links to no object, and the link never keeps
// the parent alive. The base class does nothing and has no key.
class IChild {
 public:
  virtual ~IChild() = default;
  // Links the child to the parent behind `parentHandle` (0: none).
  virtual void Init(int32_t parentHandle, const std::u16string& key = u"") {}
  virtual std::u16string Key() const { return u""; }
  // Unlinks the child; its parent is no object from now on.
  virtual void ResetParentPtr() {}
};

}  // namespace t4
