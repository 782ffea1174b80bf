#pragma once

namespace t4 {

class Application;

// Undo and redo: replays one journal step backwards or forwards on the
// in-memory model. Both directions visit the step's actions in recording
// order; they differ only in exchanging "add" and "remove". A property
// action swaps the current value with the stored one, so a step can be
// undone and redone any number of times.
class Replay {
 public:
  static void Undo(Application& app);
  static void Redo(Application& app);
};

}  // namespace t4
