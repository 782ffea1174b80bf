#pragma once

#include <cstdint>
#include <deque>
#include <memory>

#include "journal/ActionList.h"
#include "model/Action.h"
#include "model/ActionSink.h"

namespace t4 {

// The undo/redo journal: steps of actions, the oldest first. Steps
// 1..Position() are applied (can be undone), the rest can be redone. At most
// 50 steps are kept. In batch mode every action recorded until batch mode is
// switched on again goes into one step.
class Journal final : public ActionSink {
 public:
  // The actions of one step, by value, never moved as the step grows.
  using Step = ActionList;
  static constexpr size_t kMaxSteps = 50;

  bool BatchMode() const { return batchMode_; }
  // Switching on (also when already on) makes the next action open a step.
  void SetBatchMode(bool on) {
    batchMode_ = on;
    newStepPending_ = on;
    open_ = nullptr;
  }

  // Records one action: drops the redo tail, opens a step or joins the open
  // batch step, drops the oldest step past 50, and applies all steps.
  void Add(Action&& action) {
    // A batch of a hundred thousand edits joins its open step at the end of
    // the journal for every action but the first: that case inline.
    if (open_) return open_->push_back(std::move(action));
    AddSlow(std::move(action));
  }
  void Record(Action&& action) override { Add(std::move(action)); }
  // No steps, position 0.
  void Clear();
  int32_t Count() const { return static_cast<int32_t>(steps_.size()); }
  int32_t Position() const { return position_; }
  // For undo: the step at the position, moving the position back; null at 0.
  std::shared_ptr<Step> PreviousStep();
  // For redo: the step after the position, moving the position on; null at
  // the end.
  std::shared_ptr<Step> NextStep();

 private:
  void AddSlow(Action&& action);

  std::deque<std::shared_ptr<Step>> steps_;
  int32_t position_ = 0;
  bool batchMode_ = false;
  bool newStepPending_ = false;
  // The last step while it is the open batch step that the next action
  // joins (batch mode on, position at the end); else null. Every change of
  // the steps, the position or the mode resets it.
  Step* open_ = nullptr;
};

}  // namespace t4
