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
//   Kind 0: added      (Detail set: a category; else membership ItemID-CategoryID)
//   Kind 1: a property of Detail->Category changed (PropertyName, Value)
//   Kind 2: removed    (Detail set: a category; else membership ItemID-CategoryID)
// Memberships are by far the most frequent edits (a batch that moves a
// hundred thousand items records some three hundred thousand), so they
// take 24 bytes; what only category edits need sits in Detail.
class Action {
 public:
  enum : int32_t { kAdded = 0, kPropertyChanged = 1, kRemoved = 2 };

  // The part of a category edit.
  struct CategoryPart {
    // The category added, removed or changed (a snapshot).
    std::shared_ptr<t4::Category> Category;
    // "Name", "Color", "ShortCut" or "InMasterlist".
    std::u16string PropertyName;
    // The value the property gets when the action is replayed next; before
    // the first undo, the value before the change.
    PropertyValue Value;
  };

  int32_t Kind = kAdded;
  int32_t ItemID = 0;
  int32_t CategoryID = 0;
  // Set for a category edit; empty for a membership change.
  std::unique_ptr<CategoryPart> Detail;
};

}  // namespace t4
