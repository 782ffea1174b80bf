#pragma once

namespace t4 {

// Runs `step` and swallows whatever it throws; true when it ran through.
// For sequences in which every step is attempted whatever failed before
// (building and terminating the application, the steps of a membership
// edit or a deletion); the caller decides what a failed step means.
template <class F>
bool Attempt(F&& step) noexcept {
  try {
    step();
    return true;
  } catch (...) {
    return false;
  }
}

}  // namespace t4
