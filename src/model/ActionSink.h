#pragma once

#include "model/Action.h"

namespace t4 {

// Where the model's objects record their edits: the undo journal. The
// model only hands records over; what becomes of them is the journal's
// business.
class ActionSink {
 public:
  virtual ~ActionSink() = default;
  // Takes one edit.
  virtual void Record(Action&& action) = 0;
};

}  // namespace t4
