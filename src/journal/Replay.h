#pragma once

namespace t4 {

class ApplicationContext;
class Journal;

// Undo and redo: replays one journal step backwards or forwards on the
// in-memory model. Both directions visit the step's actions in recording
// order; they differ only in exchanging "add" and "remove". A property
// action swaps the current value with the stored one, so a step can be
// undone and redone any number of times. `replaying` is the application's
// replay flag: true while the step runs, false however it ends.
class Replay {
 public:
  static void Undo(Journal& journal, ApplicationContext& app, bool& replaying);
  static void Redo(Journal& journal, ApplicationContext& app, bool& replaying);
};

}  // namespace t4
