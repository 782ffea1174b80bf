#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <vector>

#include "model/Action.h"

namespace t4 {

// The actions of one journal step, in the order they were recorded. Most
// steps hold one action; a batch that moves a hundred thousand items holds
// some three hundred thousand. The list grows by blocks that never move:
// - an action stays where it is while the replay works on it, even if a
//   subscriber records more meanwhile;
// - a first block of 16 for the many small steps, then blocks of 1,024,
//   and position i is found with a compare, a shift and a mask.
class ActionList {
 public:
  ActionList() = default;
  ActionList(const ActionList&) = delete;
  ActionList& operator=(const ActionList&) = delete;
  ~ActionList();

  size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  // The action at 0-based `i` (i < size()).
  Action& operator[](size_t i) { return *At(i); }
  const Action& operator[](size_t i) const { return *At(i); }
  Action& back() { return *At(size_ - 1); }
  void push_back(Action&& action) {
    if (size_ == capacity_) AddBlock();
    // Blocks are raw memory: an action is built where it goes, once.
    new (At(size_)) Action(std::move(action));
    ++size_;
  }

 private:
  static constexpr size_t kFirst = 16;
  static constexpr size_t kShift = 10;
  static constexpr size_t kMask = (size_t{1} << kShift) - 1;

  struct FreeBlock {
    void operator()(Action* block) const { ::operator delete(block); }
  };

  Action* At(size_t i) const {
    if (i < kFirst) return blocks_[0].get() + i;
    i -= kFirst;
    return blocks_[1 + (i >> kShift)].get() + (i & kMask);
  }
  void AddBlock();

  std::vector<std::unique_ptr<Action, FreeBlock>> blocks_;
  size_t size_ = 0;
  size_t capacity_ = 0;
};

}  // namespace t4
