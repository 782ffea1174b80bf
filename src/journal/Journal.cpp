#include "journal/Journal.h"

namespace t4 {

void Journal::AddSlow(Action&& action) {
  while (position_ < Count()) steps_.pop_back();
  if (!batchMode_ || newStepPending_ || steps_.empty()) {
    auto step = std::make_shared<Step>();
    step->push_back(std::move(action));
    steps_.push_back(std::move(step));
    newStepPending_ = false;
  } else {
    steps_[static_cast<size_t>(position_) - 1]->push_back(std::move(action));
  }
  if (steps_.size() > kMaxSteps) steps_.pop_front();
  position_ = Count();
  open_ = batchMode_ ? steps_.back().get() : nullptr;
}

void Journal::Clear() {
  open_ = nullptr;
  steps_.clear();
  position_ = 0;
}

std::shared_ptr<Journal::Step> Journal::PreviousStep() {
  if (position_ <= 0) return nullptr;
  open_ = nullptr;
  return steps_[static_cast<size_t>(position_--) - 1];
}

std::shared_ptr<Journal::Step> Journal::NextStep() {
  if (position_ >= Count()) return nullptr;
  open_ = nullptr;
  return steps_[static_cast<size_t>(position_++)];
}

}  // namespace t4
