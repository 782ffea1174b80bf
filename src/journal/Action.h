#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <variant>

namespace t4 {

class Category;

// A property value kept by the journal: a name, a colour or shortcut, or the
// master-list flag.
using PropertyValue = std::variant<std::u16string, int32_t, bool>;

// One recorded edit, a plain record that only the replay interprets.
//   Kind 0: added      (Category set: a category; else membership ItemID-CategoryID)
//   Kind 1: a property of Category changed (PropertyName, Value)
//   Kind 2: removed    (Category set: a category; else membership ItemID-CategoryID)
class Action {
 public:
  enum : int32_t { kAdded = 0, kPropertyChanged = 1, kRemoved = 2 };

  int32_t Kind = kAdded;
  // The category added, removed or changed (a snapshot); empty for a
  // membership change.
  std::shared_ptr<t4::Category> Category;
  int32_t ItemID = 0;
  int32_t CategoryID = 0;
  // "Name", "Color", "ShortCut" or "InMasterlist".
  std::u16string PropertyName;
  // The value the property gets when the action is replayed next; before
  // the first undo, the value before the change.
  PropertyValue Value;
};

}  // namespace t4
